// One pinned morning through every display operation, then the locales that change order, clock, calendar or digits.

#include "timekit/format_tools.h"

#include <gtest/gtest.h>

#include "support/test_device.h"

namespace lunabrook::test {
namespace {

using F = FormatTools;
using Operation = F::Text (F::*)(const std::optional<Date>&);

constexpr const char* kMonday = "2024-06-03T09:05:07+02:00";

TEST(FormatToolsTest, ShowsDatesInAmericanEnglish) {
    // clang-format off
    const std::pair<Operation, std::string_view> rows[] = {
        {&F::hourMin, "9:05AM"}, {&F::hrMn, "9:05\u202FAM"}, {&F::hrMnSec, "9:05:07\u202FAM"}, {&F::hrMn24, "9:05"},
        {&F::dayTime, "9:05\u202FAM"}, {&F::dayTimeNoSuffix, "09:05"}, {&F::timeAs24, "09:05"}, {&F::HHmm, "09:05"},
        {&F::CSVDate, "2024-06-03 09:05:07"}, {&F::CSVYMD, "2024-06-03"}, {&F::YYMMDD, "20240603"},
        {&F::monthDateYear, "June 3, 2024"}, {&F::shortDate, "Monday"}, {&F::shortDay, "Mon 3"},
        {&F::shortDayMonth, "Mon Jun 3"}, {&F::shortDayC, "Mon3"}, {&F::shortDayOnly, "Mon"}, {&F::shortMD, "Jun 3"},
        {&F::shortMonth, "Jun"}, {&F::longMonth, "June"}, {&F::dateInMonth, "3"}, {&F::yearOfDate, "2024"},
        {&F::dayDate, "3 Monday"}, {&F::dayMonthDate, "Monday, June 3"}, {&F::dayMonthDateYear, "Monday, Jun 3, 2024"},
        {&F::ddmmyy, "6/3/24"}, {&F::ddmm, "6/3"}, {&F::ddmmm, "Jun 3"}, {&F::dayDateTime, "9:05AM Monday"},
        {&F::dayMonthDateTime, "9:05AM Monday, June 3"}, {&F::shorthhmmDDMMYY, "Mon, 6/3/24, 9:05\u202FAM"},
        {&F::shortDayMonthYear, "Mon Jun 3, 2024"}, {&F::veryShortDayOnly, "M"},
        {&F::isoDateFromDate, "2024-06-03T09:05:07+02:00"},
    };
    // clang-format on
    const TestDevice device;
    FormatTools formatTools(device);
    for (const auto& [operation, text] : rows) {
        EXPECT_EQ((formatTools.*operation)(date(kMonday)), text);
        EXPECT_EQ((formatTools.*operation)(std::nullopt), std::nullopt) << text;
    }
}

TEST(FormatToolsTest, FollowsTheLocaleAndTheFirstLanguageAlone) {
    struct Row {
        const char* locale;
        Operation operation;
        std::string_view text;
        const char* at = kMonday;
        std::vector<std::string> languages = {"en"};
    };
    const Row rows[] = {
        {"de_DE", &F::dayTime, "09:05"},
        {"de_DE", &F::shorthhmmDDMMYY, "Mo., 3.6.24, 9:05\u202FAM"},
        {"en_GB", &F::dayDate, "Monday 3"},
        {"th_TH", &F::YYMMDD, "25670603"},
        {"ar_EG", &F::YYMMDD, "٢٠٢٤٠٦٠٣"},
        // The year of the week: America's begins on Sunday and counts with its first day, Germany's is ISO's.
        {"en_US", &F::yearOfDate, "2026", "2025-12-29T12:00:00+01:00"},
        {"en_US", &F::shortDayMonthYear, "Sun Dec 28, 2026", "2025-12-28T12:00:00+01:00"},
        {"en_US", &F::yearOfDate, "2025", "2025-12-27T12:00:00+01:00"},
        {"de_DE", &F::yearOfDate, "2025", "2025-12-28T12:00:00+01:00"},
        // "ko" anywhere in the first language.
        {"en_US", &F::shortDayMonthYear, "2024년 6월 3일 Mon요일", kMonday, {"kok-IN"}},
        {"en_US", &F::shortDayMonthYear, "Mon Jun 3, 2024", kMonday, {"en", "ko"}},
        {"en_US", &F::shortDayMonthYear, "Mon Jun 3, 2024", kMonday, {}},
    };
    for (const Row& row : rows) {
        const TestDevice device{{.locale = row.locale, .languages = row.languages}};
        EXPECT_EQ((FormatTools(device).*row.operation)(date(row.at)), row.text) << row.locale;
    }
    for (const auto& [locale, is24hr] : {std::pair("en_US", false), {"de_DE", true}, {"fr_CA", true}}) {
        const TestDevice device{{.locale = locale}};
        EXPECT_EQ(FormatTools(device).is24hr(), is24hr) << locale;
    }
}

TEST(FormatToolsTest, ReadsNumbersAndDayKeys) {
    const TestDevice arabic{{.locale = "ar_EG"}};  // day and hour do not follow its digits and clock
    FormatTools formatTools(arabic);
    EXPECT_EQ(formatTools.currentHour(date("2024-06-10T21:59:00Z")), 23);
    EXPECT_EQ(formatTools.currentDay(date("2024-06-09T22:00:00Z")), 10);
    EXPECT_EQ(formatTools.currentHour(std::nullopt), 0);
    const TestDevice thai{{.now = kMonday, .locale = "th_TH"}};
    EXPECT_EQ(FormatTools(thai).currentMin(date(kMonday)), 5);
    EXPECT_EQ(FormatTools(thai).currentYear(), 2567);
    EXPECT_EQ(FormatTools(thai).NSDateFromYYMMDD("25670603"), date("2024-06-03T00:00:00+02:00"));
    for (const char* noKey : {"", "2567063", "256706030", "25670230", "2567-06-03", "25670603x", "+2567060"}) {
        EXPECT_EQ(FormatTools(thai).NSDateFromYYMMDD(noKey), std::nullopt) << noKey;
    }
    EXPECT_EQ(FormatTools(thai).sentenceCapitalizedString("éCOLE nIGHT 2"), "École night 2");
}

}  // namespace
}  // namespace lunabrook::test
