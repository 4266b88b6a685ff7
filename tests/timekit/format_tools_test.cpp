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

TEST(FormatToolsTest, FollowsTheLocale) {
    struct Row {
        const char* locale;
        Operation operation;
        std::string_view text;
        const char* at = kMonday;
    };
    const Row rows[] = {
        {"de_DE", &F::dayTime, "09:05"},
        {"de_DE", &F::dayMonthDateYear, "Montag, 3. Juni 2024"},
        {"de_DE", &F::shorthhmmDDMMYY, "Mo., 3.6.24, 9:05\u202FAM"},
        {"en_GB", &F::dayDate, "Monday 3"},
        {"en_GB", &F::shorthhmmDDMMYY, "Mon, 03/06/24, 9:05\u202Fam"},
        {"fi_FI", &F::dayTime, "9.05"},
        {"ko_KR", &F::dayTime, "오전 9:05"},
        {"ko_KR", &F::shorthhmmDDMMYY, "24. 6. 3. (월) 오전 9:05"},
        {"th_TH", &F::YYMMDD, "25670603"},
        {"ar_EG", &F::YYMMDD, "٢٠٢٤٠٦٠٣"},
        // The year of the week: America's begins on Sunday and counts with its first day, Germany's is ISO's.
        {"en_US", &F::yearOfDate, "2026", "2025-12-29T12:00:00+01:00"},
        {"en_US", &F::shortDayMonthYear, "Sun Dec 28, 2026", "2025-12-28T12:00:00+01:00"},
        {"en_US", &F::yearOfDate, "2025", "2025-12-27T12:00:00+01:00"},
        {"de_DE", &F::yearOfDate, "2025", "2025-12-28T12:00:00+01:00"},
    };
    for (const Row& row : rows) {
        const TestDevice device{{.locale = row.locale}};
        EXPECT_EQ((FormatTools(device).*row.operation)(date(row.at)), row.text) << row.locale;
    }
    for (const auto& [locale, is24hr] : std::initializer_list<std::pair<const char*, bool>>{
             {"en_US", false}, {"en_GB", true}, {"de_DE", true}, {"ko_KR", false}, {"fr_CA", true}}) {
        const TestDevice device{{.locale = locale}};
        EXPECT_EQ(FormatTools(device).is24hr(), is24hr) << locale;
    }
}

TEST(FormatToolsTest, ChoosesTheKoreanDayByTheFirstLanguageAlone) {
    const std::pair<std::vector<std::string>, std::string_view> rows[] = {
        {{"ko-KR"}, "2024년 6월 3일 Mon요일"},
        {{"kok-IN"}, "2024년 6월 3일 Mon요일"},
        {{"en", "ko"}, "Mon Jun 3, 2024"},
        {{}, "Mon Jun 3, 2024"},
    };
    for (const auto& [languages, text] : rows) {
        const TestDevice device{{.languages = languages}};
        EXPECT_EQ(FormatTools(device).shortDayMonthYear(date(kMonday)), text);
    }
}

TEST(FormatToolsTest, ReadsNumbersAndDayKeys) {
    const TestDevice arabic{{.locale = "ar_EG"}};  // day and hour do not follow its digits and clock
    FormatTools formatTools(arabic);
    EXPECT_EQ(formatTools.currentHour(date("2024-06-10T00:30:00+02:00")), 0);
    EXPECT_EQ(formatTools.currentHour(date("2024-06-10T21:59:00Z")), 23);
    EXPECT_EQ(formatTools.currentDay(date("2024-06-09T22:00:00Z")), 10);
    EXPECT_EQ(formatTools.currentHour(std::nullopt), 0);
    const TestDevice thai{{.now = kMonday, .locale = "th_TH"}};
    EXPECT_EQ(FormatTools(thai).currentMin(date(kMonday)), 5);
    EXPECT_EQ(FormatTools(thai).currentYear(), 2567);
    EXPECT_EQ(FormatTools(thai).NSDateFromYYMMDD("25670603"), date("2024-06-03T00:00:00+02:00"));
    const TestDevice american;
    EXPECT_EQ(FormatTools(american).NSDateFromYYMMDD("20240603"), date("2024-06-03T00:00:00+02:00"));
    for (const char* noKey : {"", "2024063", "202406030", "20240230", "2024-06-03", "20240603x", "+2024060"}) {
        EXPECT_EQ(FormatTools(american).NSDateFromYYMMDD(noKey), std::nullopt) << noKey;
    }
    EXPECT_EQ(FormatTools(american).sentenceCapitalizedString("éCOLE nIGHT 2"), "École night 2");
    EXPECT_EQ(FormatTools(american).sentenceCapitalizedString(""), "");
}

}  // namespace
}  // namespace lunabrook::test
