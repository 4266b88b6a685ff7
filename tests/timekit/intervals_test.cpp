// Durations, unit words and the how-long-ago phrase.

#include <gtest/gtest.h>

#include <limits>

#include "support/test_device.h"
#include "timekit/format_tools.h"

namespace lunabrook::test {
namespace {

using F = FormatTools;

constexpr double kHour = 3600;
constexpr double kDay = 24 * kHour;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(IntervalsTest, ShowsDurations) {
    struct Row {
        F::Text (F::*operation)(double);
        double seconds;
        std::string_view text;
    };
    // clang-format off
    const Row rows[] = {
        {&F::formattedTimeInterval, 25500, "7h 5m"}, {&F::formattedTimeInterval, 300, "0h 5m"},
        {&F::formattedLongTimeInterval, 7 * kHour, "7 hours, 0 minutes"}, {&F::formattedMinInterval, 5400, "90m"},
        {&F::formattedShortTimeInterval, 25500, "7:05"}, {&F::formattedShortTimeInterval, 300, "5"},
        {&F::formattedShortHMSInterval, 3665, "01:01:05"}, {&F::formattedLongMinInterval, 5400, "90 min"},
    };
    // clang-format on
    const TestDevice device;
    FormatTools formatTools(device);
    for (const Row& row : rows) {
        EXPECT_EQ((formatTools.*row.operation)(row.seconds), row.text);
    }
}

TEST(IntervalsTest, DaysKeepTheZerosOfTheDurationBefore) {
    const TestDevice device;
    FormatTools formatTools(device);
    EXPECT_EQ(formatTools.formattedDaysInterval(7 * kDay), "1w");
    for (const auto keepsZeros : {&F::formattedTimeInterval, &F::formattedLongTimeInterval, &F::formattedMinInterval,
                                  &F::formattedShortHMSInterval, &F::formattedLongMinInterval}) {
        (formatTools.*keepsZeros)(0);
        EXPECT_EQ(formatTools.formattedDaysInterval(7 * kDay), "1w 0d");
        formatTools.formattedShortTimeInterval(0);
        EXPECT_EQ(formatTools.formattedDaysInterval(7 * kDay), "1w");
    }
    EXPECT_EQ(formatTools.shortTermForMIN(), "min");
    EXPECT_EQ(formatTools.formattedDaysInterval(kDay), "0w 1d");
}

TEST(IntervalsTest, NamesUnitsWithoutTheNumber) {
    const TestDevice american;
    EXPECT_EQ(FormatTools(american).shortTermForHRS(), "hr");
    EXPECT_EQ(FormatTools(american).shortTermForDAYS(), "days");
    const TestDevice french{{.locale = "fr_FR"}};
    EXPECT_EQ(FormatTools(french).shortTermForDAYS(), "\u202Fj") << "a no-break blank stays";
}

TEST(IntervalsTest, SaysHowLongAgo) {
    // clang-format off
    const std::pair<double, std::string_view> rows[] = {
        {kNaN, "just now"}, {-kInfinity, "just now"}, {-10 * kDay, "just now"}, {59.9, "just now"},
        {60, "a minute ago"}, {119.9, "a minute ago"}, {120, "2 minutes ago"}, {kHour, "60 minutes ago"},
        {kHour + 1, "an hour ago"}, {2 * kHour, "2 hours ago"}, {kDay, "24 hours ago"}, {kDay + 1, "a day ago"},
        {7 * kDay + 1, "7 days ago"}, {14 * kDay - 1, "13 days ago"}, {14 * kDay, "2 weeks ago"},
        {28 * kDay, "4 weeks ago"}, {28 * kDay + 1, "Wed, May 13, 2026, 8:29\u202FAM"},
        // In single precision these are whole days and four whole weeks.
        {kDay + 0.001, "a day ago"}, {2 * kDay - 0.001, "2 days ago"}, {28 * kDay + 0.05, "4 weeks ago"},
    };
    // clang-format on
    const TestDevice device{{.now = "2026-06-10T08:30:00+02:00"}};
    FormatTools formatTools(device);
    for (const auto& [secondsAgo, phrase] : rows) {
        EXPECT_EQ(formatTools.whenString(dateByAddingSeconds(device->now(), -secondsAgo)), phrase) << secondsAgo;
    }
    EXPECT_EQ(formatTools.whenString(std::nullopt), "just now");
    EXPECT_EQ(formatTools.whenString(dateFromSecondsSince1970(-kInfinity)), std::nullopt);

    EXPECT_EQ(formatTools.whenStringFB("2026-06-09T22:30:00-0500"), "3 hours ago");
    EXPECT_EQ(formatTools.whenStringFB("2026-06-10T05:30:00"), "just now") << "no offset";
}

}  // namespace
}  // namespace lunabrook::test
