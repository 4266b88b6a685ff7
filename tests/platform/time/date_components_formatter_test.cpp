#include "platform/time/date_components_formatter.h"

#include <gtest/gtest.h>

#include <limits>

namespace lunabrook {
namespace {

using namespace calendar_unit;
using enum UnitsStyle;

constexpr unsigned kHourMinute = kHour + kMinute;
constexpr double kMinutes = 60.0;
constexpr double kHours = 3600.0;
constexpr double kDays = 86400.0;

std::string duration(const char* locale, UnitsStyle style, unsigned units, bool pads, double interval, int count = 0) {
    DateComponentsFormatter formatter(Locale::named(locale).value());
    formatter.unitsStyle = style;
    formatter.allowedUnits = units;
    formatter.zeroFormattingBehavior = pads ? ZeroFormatting::pad : ZeroFormatting::standard;
    formatter.maximumUnitCount = count;
    return formatter.stringFromTimeInterval(interval).value_or("nil");
}

TEST(DateComponentsFormatter, WritesHoursAndMinutesInEveryStyle) {
    struct Row {
        UnitsStyle style;
        bool pads;
        const char* sevenFive;
        const char* five;
        const char* seven;
        const char* zero;
    };
    const Row rows[] = {
        {positional, true, "07:05", "00:05", "07:00", "00:00"},
        {positional, false, "7:05", "5", "7:00", "0"},
        {abbreviated, true, "7h 5m", "0h 5m", "7h 0m", "0h 0m"},
        {abbreviated, false, "7h 5m", "5m", "7h", "0m"},
        {shortened, true, "7 hr, 5 min", "0 hr, 5 min", "7 hr, 0 min", "0 hr, 0 min"},
        {full, true, "7 hours, 5 minutes", "0 hours, 5 minutes", "7 hours, 0 minutes", "0 hours, 0 minutes"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(duration("en_US", row.style, kHourMinute, row.pads, 7 * kHours + 5 * kMinutes), row.sevenFive);
        EXPECT_EQ(duration("en_US", row.style, kHourMinute, row.pads, 5 * kMinutes), row.five);
        EXPECT_EQ(duration("en_US", row.style, kHourMinute, row.pads, 7 * kHours), row.seven);
        EXPECT_EQ(duration("en_US", row.style, kHourMinute, row.pads, 0), row.zero);
    }
}

TEST(DateComponentsFormatter, CutsUnitsFromPlainSeconds) {
    struct Row {
        const char* name;
        UnitsStyle style;
        unsigned units;
        bool pads;
        double interval;
        const char* expected;
        int count = 0;
    };
    constexpr unsigned kClock = kHour + kMinute + kSecond;
    constexpr unsigned kWeekDay = kWeekOfMonth + kDay;
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const Row rows[] = {
        {"cut_toward_zero", abbreviated, kHourMinute, true, 7 * kHours + 59.99, "7h 0m"},
        {"largest_does_not_wrap", abbreviated, kHourMinute, true, 100 * kHours, "100h 0m"},
        {"clock_pad_seconds", positional, kClock, true, 5, "00:00:05"},
        {"clock_keeps_inner_zero", positional, kClock, false, kHours + 5, "1:00:05"},
        {"clock_drops_leading_zero", positional, kClock, false, 65, "1:05"},
        {"clock_does_not_group", positional, kHourMinute, true, 1234 * kHours, "1234:00"},
        {"eight_days", abbreviated, kWeekDay, false, 8 * kDays, "1w 1d", 2},
        {"no_day", abbreviated, kWeekDay, false, 0, "0d", 2},
        {"largest_units_only", abbreviated, kClock, true, 3661, "1h 1m", 2},
        {"minus_on_a_zero", abbreviated, kHourMinute, true, -5 * kMinutes, "-0h 5m"},
        {"minus_is_never_lost", abbreviated, kHourMinute, true, -30, "-0h 0m"},
        {"minus_on_a_clock", positional, kHourMinute, true, -5 * kMinutes, "-00:05"},
        {"minus_after_dropping", full, kHourMinute, false, -5 * kMinutes, "-5 minutes"},
        {"negative_zero_is_zero", abbreviated, kHourMinute, true, -0.0, "0h 0m"},
        {"absurd", abbreviated, kMinute, true, -1e308, "-153,722,867,280,912,930m"},
        {"nan", abbreviated, kHourMinute, true, kNan, "nil"},
        {"infinite", abbreviated, kHourMinute, true, -kInfinity, "nil"},
        {"unknown_unit", abbreviated, 4, true, 60, "nil"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(duration("en_US", row.style, row.units, row.pads, row.interval, row.count), row.expected) << row.name;
    }
}

TEST(DateComponentsFormatter, SpeaksTheLocalesLanguage) {
    const auto sevenFive = [](const char* locale, UnitsStyle style) {
        return duration(locale, style, kHourMinute, true, 7 * kHours + 5 * kMinutes);
    };
    EXPECT_EQ(sevenFive("de_DE", abbreviated), "7 Std., 5 Min.");
    EXPECT_EQ(sevenFive("fr_FR", full), "7\u00A0heures et 5 minutes");
    EXPECT_EQ(sevenFive("es_ES", shortened), "7 h y 5 min");
    EXPECT_EQ(sevenFive("fi_FI", positional), "07.05");
    EXPECT_EQ(sevenFive("ar_EG", positional), "\u0660\u0667:\u0660\u0665");
    EXPECT_EQ(duration("fi_FI", abbreviated, kHourMinute, true, -30), "\u22120t 0min");
    EXPECT_EQ(duration("fr_FR", full, kHourMinute, true, 0), "0\u00A0heure et 0 minute");
}

}  // namespace
}  // namespace lunabrook
