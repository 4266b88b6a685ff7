// Sleep days and clock times on ordinary days, across changes of the clocks and at the ends of the number range.

#include <gtest/gtest.h>

#include <limits>

#include "platform/device/user_defaults.h"
#include "support/test_device.h"
#include "timekit/format_tools.h"

namespace lunabrook::test {
namespace {

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();

// "2024-06-10 21:00:00" in the device's zone, or "nil".
std::string shown(const Device& device, const std::optional<Date>& date) {
    return FormatTools(device).CSVDate(date).value_or("nil");
}

void setNightHour(const Device& device, Value nightHour) {
    UserDefaults(device, "kestrovan.Lunabrook.intents").setObject("nightHour11", std::move(nightHour));
}

TEST(DayArithmeticTest, BeginsTheSleepDayAtTheNightHour) {
    struct Row {
        const char* now;
        std::optional<Value> nightHour;
        const char *nowDate, *seed0, *seedMinus1;
    };
    const Row rows[] = {
        {"2024-06-10T20:59:00+02:00", {}, "2024-06-10 09:00:00", "2024-06-09 21:00:00", "2024-06-08 21:00:00"},
        {"2024-06-10T21:00:00+02:00", {}, "2024-06-11 09:00:00", "2024-06-10 21:00:00", "2024-06-09 21:00:00"},
        {"2024-06-10T00:00:00+02:00", 0, "2024-06-10 12:00:00", "2024-06-10 00:00:00", "2024-06-09 00:00:00"},
        {"2024-06-10T21:30:00+02:00", "22", "2024-06-10 10:00:00", "2024-06-09 22:00:00", "2024-06-08 22:00:00"},
        {"2024-06-10T14:00:00+02:00", -1, "nil", "nil", "2024-06-07 23:00:00"},
        {"2024-06-10T14:00:00+02:00", kMost, "nil", "nil", "nil"},
        {"2024-03-31T12:00:00+02:00", {}, "2024-03-31 10:00:00", "2024-03-30 21:00:00", "2024-03-29 21:00:00"},
    };
    for (const Row& row : rows) {
        const TestDevice device{{.now = row.now}};
        FormatTools formatTools(device);
        EXPECT_TRUE(formatTools.nowDate());  // the hour is read anew at each call, so this one keeps nothing
        if (row.nightHour) {
            setNightHour(device, *row.nightHour);
        }
        EXPECT_EQ(shown(device, formatTools.nowDate()), row.nowDate) << row.now;
        EXPECT_EQ(shown(device, formatTools.fromDateForSeed(0)), row.seed0) << row.now;
        EXPECT_EQ(shown(device, formatTools.fromDateForSeed(-1)), row.seedMinus1) << row.now;
    }
}

TEST(DayArithmeticTest, FindsTheNightOfAnySeed) {
    const TestDevice device{{.now = "2024-06-10T00:01:00Z", .timeZone = "UTC"}};
    FormatTools formatTools(device);
    EXPECT_EQ(shown(device, formatTools.fromDateForSeed(1)), "2024-06-10 21:00:00");
    EXPECT_EQ(shown(device, formatTools.fromDateForSeed(kMost)), "nil");
    EXPECT_EQ(shown(device, formatTools.fromDateForSeed(kLeast)), "nil");
    setNightHour(device, 0);
    EXPECT_EQ(shown(device, formatTools.fromDateForSeed(-30000)), "1942-04-22 00:00:00");
    // Single precision makes 30001 days 128 seconds longer, which reach the evening before.
    EXPECT_EQ(shown(device, formatTools.fromDateForSeed(-30001)), "1942-04-20 00:00:00");
}

TEST(DayArithmeticTest, CountsDaySeeds) {
    struct Row {
        const char *name, *now, *date;
        std::int64_t seed;
        const char* timeZone = "Europe/Berlin";
    };
    const Row rows[] = {
        {"first of today", "2024-06-10T14:00:00+02:00", "2024-06-10T00:00:00+02:00", 0},
        {"last of yesterday", "2024-06-10T14:00:00+02:00", "2024-06-09T23:59:00+02:00", -1},
        {"night hour has struck", "2024-06-10T21:00:00+02:00", "2024-06-10T21:00:00+02:00", -1},
        {"back over spring", "2024-04-01T12:00:00+02:00", "2024-03-30T12:00:00+01:00", -2},
        {"ahead over spring: missed", "2024-03-30T12:00:00+01:00", "2024-03-31T12:00:00+02:00", 0},
        // Four o'clock is the hour that is missing there; it is read as 24 hours later.
        {"ahead over spring at four", "2015-03-28T12:00:00+04:00", "2015-03-29T12:00:00+05:00", 1, "Asia/Baku"},
        {"back over autumn", "2024-10-28T12:00:00+01:00", "2024-10-26T12:00:00+02:00", -2},
        {"ahead over autumn", "2024-10-26T12:00:00+02:00", "2024-10-27T12:00:00+01:00", 1},
    };
    for (const Row& row : rows) {
        const TestDevice device{{.now = row.now, .timeZone = row.timeZone}};
        EXPECT_EQ(FormatTools(device).seedForDate(date(row.date)), row.seed) << row.name;
    }
}

TEST(DayArithmeticTest, BuildsAndMeasuresDays) {
    const TestDevice device{{.now = "2024-01-31T12:00:00+01:00"}};
    FormatTools formatTools(device);
    const Date day = dateByAddingSeconds(date("2024-06-10T14:15:16+02:00"), 0.25);
    EXPECT_EQ(formatTools.epochIntervalForDate(day, 7, 30), 1717997400.0);
    const std::pair<std::optional<Date>, const char*> rows[] = {
        {formatTools.dateForDate(day, 25, -1), "2024-06-11 00:59:00"},
        {formatTools.dateForDate(date("2024-03-31T12:00:00+02:00"), 2, 30), "2024-03-31 03:30:00"},
        {formatTools.dateForDate(day, kMost, kLeast), "nil"},
        {formatTools.dateForDate(day, 2023, 0, 0, 24, 60), "2022-12-01 01:00:00"},
        {formatTools.dateForDate(day, kLeast, kMost, kLeast, kMost, kLeast), "nil"},
        {formatTools.dateForDate(std::nullopt, 2023, 1, 1, 0, 0), "nil"},
        {formatTools.startDateForDaysAgo(5, date("2024-07-03T12:34:56+02:00")), "2024-06-28 03:00:00"},
        {formatTools.startDateForDaysAgo(kLeast, day), "nil"},
        {formatTools.startDateForDaysAgo(5, std::nullopt), "nil"},
        {formatTools.startOfMonthMonthsAgo(1), "2023-12-01 03:00:00"},
        {formatTools.startOfMonthMonthsAgo(kMost), "nil"},
    };
    for (const auto& [built, expected] : rows) {
        EXPECT_EQ(shown(device, built), expected);
    }
    EXPECT_EQ(formatTools.nameOfMonthMonthsAgo(1), "Dec");
    EXPECT_EQ(formatTools.getMidnight(), date("2024-01-31T00:00:00+01:00"));
    EXPECT_EQ(formatTools.intervalSinceMidnight(dateByAddingSeconds(date("2024-03-31T12:00:00+02:00"), 0.5)), 39600.5);
    EXPECT_EQ(formatTools.getWeekdayNoForDate(date("2024-09-14T23:59:59+02:00")), 7);
    EXPECT_EQ(formatTools.dayNoOfDate(date("2024-09-14T22:00:00Z")), 1);  // Sunday the 15th
}

TEST(DayArithmeticTest, FindsChangesOfTheClocks) {
    struct Row {
        const char *timeZone, *date;
        int change, hour, hourBefore;
    };
    const Row rows[] = {
        {"America/New_York", "2024-11-03T12:00:00-05:00", 1, 2, 1},
        {"America/New_York", "2024-11-02T23:00:00-04:00", 0, 0, 0},
        {"Europe/Berlin", "2024-03-31T00:30:00+01:00", -1, 2, 1},
        {"Europe/Berlin", "2024-10-27T23:30:00+01:00", 1, 3, 2},
        {"Australia/Lord_Howe", "2024-10-06T12:00:00+11:00", -1, 2, 1},  // by half an hour
        {"America/Havana", "2024-11-03T12:00:00-05:00", 1, 1, 0},
        {"America/Sao_Paulo", "2018-11-04T12:00:00-02:00", -1, 0, 0},  // midnight itself is missing
        {"Asia/Baku", "2015-10-25T12:00:00+04:00", 1, 5, 4},           // the last hour that is looked at
        {"Asia/Baku", "1996-10-27T12:00:00+04:00", 1, 0, 0},           // an hour later
    };
    for (const Row& row : rows) {
        const TestDevice device{{.timeZone = row.timeZone}};
        FormatTools formatTools(device);
        EXPECT_EQ(formatTools.isDaylightSavings(date(row.date)), row.change) << row.date;
        EXPECT_EQ(formatTools.getDaylightSavingsHourForDate(date(row.date), 0), row.hour) << row.date;
        EXPECT_EQ(formatTools.getDaylightSavingsHourForDate(date(row.date), 1), row.hourBefore) << row.date;
    }
}

TEST(DayArithmeticTest, MissingDatesAreZero) {
    const TestDevice device;
    FormatTools formatTools(device);
    EXPECT_EQ(formatTools.seedForDate(std::nullopt), 0);
    EXPECT_EQ(formatTools.epochIntervalForDate(std::nullopt, 7, 30), 0);
    EXPECT_EQ(formatTools.isDaylightSavings(std::nullopt), 0);
    EXPECT_EQ(formatTools.getDaylightSavingsHourForDate(std::nullopt, 0), 0);
    EXPECT_EQ(formatTools.intervalSinceMidnight(std::nullopt), 0);
    EXPECT_EQ(formatTools.getWeekdayNoForDate(std::nullopt), 0);
    setNightHour(device, -1);
    EXPECT_EQ(formatTools.seedForDate(device->now()), 0);

    TestDevice clockless;
    clockless.setNow(dateFromSecondsSince1970(std::numeric_limits<double>::infinity()));
    FormatTools timeless(clockless);
    for (const auto& missing : {timeless.nowDate(), timeless.getMidnight(), timeless.fromDateForSeed(0),
                                timeless.fromDateForSeed(-1), timeless.startOfMonthMonthsAgo(1)}) {
        EXPECT_EQ(missing, std::nullopt);
    }
}

}  // namespace
}  // namespace lunabrook::test
