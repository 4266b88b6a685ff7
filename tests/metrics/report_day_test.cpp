#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "metrics/group_metrics.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

constexpr const char* kBerlin = "Europe/Berlin";
constexpr const char* kNewYork = "America/New_York";

TEST(ReportDayTest, TheSleepDayBeginsAtTheLatestNightHour) {
    struct Row {
        const char *name, *zone, *now;
        std::int64_t nightHour;
        const char* start;
    };
    const Row rows[] = {
        {"just_before_the_hour", kBerlin, "2026-06-10T20:59:59+02:00", 21, "2026-06-09T21:00:00+02:00"},
        {"on_the_hour", kBerlin, "2026-06-10T21:00:00+02:00", 21, "2026-06-10T21:00:00+02:00"},
        {"midnight_is_today_s", kBerlin, "2026-06-10T00:00:00+02:00", 0, "2026-06-10T00:00:00+02:00"},
        {"spring_eve", kBerlin, "2026-03-29T20:30:00+02:00", 21, "2026-03-28T21:00:00+01:00"},
        // A day back from half past midnight after the 23-hour day is the evening before it: no correction is meant.
        {"after_spring", kBerlin, "2026-03-30T00:30:00+02:00", 21, "2026-03-28T21:00:00+01:00"},
        {"skipped_hour", kBerlin, "2026-03-29T08:30:00+02:00", 2, "2026-03-29T03:00:00+02:00"},
        {"doubled_hour", kBerlin, "2026-10-25T08:30:00+01:00", 2, "2026-10-25T02:00:00+02:00"},
        {"autumn_eve", kNewYork, "2026-11-01T20:30:00-05:00", 21, "2026-10-31T21:00:00-04:00"},
        {"absurd_hour_rolls_over", kBerlin, "2026-06-10T08:30:00+02:00", 99, "2026-06-13T03:00:00+02:00"},
    };
    for (const Row& row : rows) {
        const TestDevice device{{.now = row.now, .timeZone = row.zone}};
        EXPECT_EQ(GroupMetrics(device).getFromDateForNightHour(row.nightHour), date(row.start)) << row.name;
    }
    const TestDevice device;
    EXPECT_FALSE(GroupMetrics(device).getFromDateForNightHour(-1));
    EXPECT_FALSE(GroupMetrics(device).getFromDateForNightHour(std::numeric_limits<std::int64_t>::max()));
}

TEST(ReportDayTest, ThePreviousDayIsReportedFromTheNightHourToMidnight) {
    struct Row {
        const char *now, *name;
        Value config;
        bool isPrevious;
    };
    const auto hour = [](Value value) { return Dictionary{{"nightHour", std::move(value)}}; };
    const Row rows[] = {
        {"20:59:59", "missing_is_21", Dictionary{}, false},
        {"21:00:00", "missing_is_21", Dictionary{}, true},
        {"00:10:00", "after_midnight", Dictionary{}, false},
        {"21:00:00", "wrong_type_is_missing", "21", true},
        {"23:00:00", "midnight_never", hour(0), false},
        {"21:30:00", "cut_off", hour(22.7), false},
        {"22:00:00", "cut_off", hour(22.7), true},
        {"23:00:00", "cut_off_to_midnight", hour(-0.5), false},
        {"21:00:00", "negative_is_21", hour(-3), true},
        {"21:30:00", "text_converts", hour("22 h"), false},
        {"23:00:00", "nan_is_midnight", hour(std::nan("")), false},
    };
    for (const Row& row : rows) {
        TestDevice device{{.now = std::string("2026-06-10T") + row.now + "+02:00"}};
        device.store({{"lunabrookConfig", row.config}});
        GroupMetrics metrics(device);
        EXPECT_FALSE(metrics.shouldReportPreviousDay()) << row.name << ": nothing is open yet";
        metrics.watchDictIsValid();
        EXPECT_EQ(metrics.shouldReportPreviousDay(), row.isPrevious) << row.name << row.now;
    }
}

TEST(ReportDayTest, TheWatchRecordIsValidAMinuteAfterTheStart) {
    struct Row {
        const char* name;
        Value watch, nightHour;
        bool isValid;
    };
    const auto at = [](Value time) { return Dictionary{{"rawSynchTime", std::move(time)}}; };
    const Row rows[] = {
        {"exactly_a_minute", at(date("2026-06-09T21:01:00+02:00")), 21, false},
        {"half_a_second_more", at(date("2026-06-09T21:01:00.500+02:00")), 21, true},
        {"hour_of_the_settings", at(date("2026-06-09T21:30:00+02:00")), 22, false},
        {"time_of_the_wrong_type", at(1e12), 21, false},
        {"record_of_the_wrong_type", "watch", 21, false},
    };
    for (const Row& row : rows) {
        TestDevice device;
        device.store({{"watchTrackDict", row.watch}, {"lunabrookConfig", Dictionary{{"nightHour", row.nightHour}}}});
        EXPECT_EQ(GroupMetrics(device).watchDictIsValid(), row.isValid) << row.name;
    }
}

TEST(ReportDayTest, ReadsTheSettings) {
    TestDevice device;
    device.store({{"lunabrookConfig", Dictionary{{"off", false}, {"text", "7.5 h"}}}});
    GroupMetrics metrics(device);
    EXPECT_EQ(metrics.getLunabrookConfigValueForKey("text"), -1.0F) << "the store is not open yet";
    metrics.watchDictIsValid();
    EXPECT_EQ(metrics.getLunabrookConfigValueForKey("text"), 7.5F);
    EXPECT_EQ(metrics.getLunabrookConfigValueForKey("none"), -1.0F);
    EXPECT_TRUE(metrics.getLunabrookSwitchValueForKey("off"));
    EXPECT_FALSE(metrics.getLunabrookSwitchValueForKey("none"));
}

TEST(ReportDayTest, TheBankHasANightHourOfItsOwn) {
    struct Row {
        const char *name, *now;
        std::optional<Value> nightHour;
        const char* key;
    };
    const Row rows[] = {
        {"missing_is_21_whatever_the_settings", "2026-06-10T21:30:00+02:00", {}, "20260611"},
        {"its_own", "2026-06-10T21:30:00+02:00", 22, "20260610"},
    };
    for (const Row& row : rows) {
        TestDevice device{{.now = row.now}};
        const auto hasResult = [&](const Value& key) {
            Dictionary bank{{"spO2Dict", Dictionary{{"key", key}}}};
            setValue(bank, "nightHour", row.nightHour);
            device.store({{"bankDict", bank}, {"lunabrookConfig", Dictionary{{"nightHour", 22}}}});
            return GroupMetrics(device).requestSpO2().has_value();
        };
        EXPECT_TRUE(hasResult(row.key)) << row.name;
        EXPECT_FALSE(hasResult("20260609")) << row.name;
        EXPECT_FALSE(hasResult(std::stoi(row.key))) << row.name << ": a number is no key";
    }
}

}  // namespace
}  // namespace lunabrook::test
