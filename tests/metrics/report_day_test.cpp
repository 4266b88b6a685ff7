#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "metrics/group_metrics.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

TEST(ReportDayTest, TheSleepDayBeginsAtTheLatestNightHour) {
    struct Row {
        const char *name, *now;
        std::int64_t nightHour;
        const char* start;
    };
    const Row rows[] = {
        {"just_before_the_hour", "2026-06-10T20:59:59+02:00", 21, "2026-06-09T21:00:00+02:00"},
        {"on_the_hour", "2026-06-10T21:00:00+02:00", 21, "2026-06-10T21:00:00+02:00"},
        {"midnight_is_today_s", "2026-06-10T00:00:00+02:00", 0, "2026-06-10T00:00:00+02:00"},
        // A day back from half past midnight after the 23-hour day is the evening before it: no correction is meant.
        {"after_spring", "2026-03-30T00:30:00+02:00", 21, "2026-03-28T21:00:00+01:00"},
        {"skipped_hour", "2026-03-29T08:30:00+02:00", 2, "2026-03-29T03:00:00+02:00"},
        {"doubled_hour", "2026-10-25T08:30:00+01:00", 2, "2026-10-25T02:00:00+02:00"},
        {"autumn_eve", "2026-10-25T20:30:00+01:00", 21, "2026-10-24T21:00:00+02:00"},
        {"absurd_hour_rolls_over", "2026-06-10T08:30:00+02:00", 99, "2026-06-13T03:00:00+02:00"},
    };
    for (const Row& row : rows) {
        const TestDevice device{{.now = row.now}};
        EXPECT_EQ(GroupMetrics(device).getFromDateForNightHour(row.nightHour), date(row.start)) << row.name;
    }
    for (const std::int64_t noHour : {std::int64_t{-1}, std::numeric_limits<std::int64_t>::max()}) {
        EXPECT_FALSE(GroupMetrics(TestDevice()).getFromDateForNightHour(noHour)) << noHour;
    }
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
        {"21:00:00", "wrong_type_is_missing", "21", true},
        {"23:00:00", "midnight_never", hour(0), false},
        {"21:30:00", "cut_off", hour(22.7), false},
        {"22:00:00", "cut_off", hour(22.7), true},
        {"23:00:00", "cut_off_to_midnight", hour(-0.5), false},
        {"21:00:00", "negative_is_21", hour(-3), true},
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
    TestDevice device;
    const auto isValid = [&](const Value& watch, int nightHour = 21) {
        device.store({{"watchTrackDict", watch}, {"lunabrookConfig", Dictionary{{"nightHour", nightHour}}}});
        return GroupMetrics(device).watchDictIsValid();
    };
    const auto at = [](Value time) { return Dictionary{{"rawSynchTime", std::move(time)}}; };
    EXPECT_FALSE(isValid(at(date("2026-06-09T21:01:00+02:00")))) << "exactly a minute";
    EXPECT_TRUE(isValid(at(date("2026-06-09T21:01:00.500+02:00"))));
    EXPECT_FALSE(isValid(at(date("2026-06-09T21:30:00+02:00")), 22)) << "the hour is that of the settings";
    EXPECT_FALSE(isValid(at(1e12))) << "a number is no date";
    EXPECT_FALSE(isValid("watch"));
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
    TestDevice device{{.now = "2026-06-10T21:30:00+02:00"}};
    const auto hasResult = [&](const Value& key, Dictionary bank) {
        bank.emplace("spO2Dict", Dictionary{{"key", key}});
        device.store({{"bankDict", bank}, {"lunabrookConfig", Dictionary{{"nightHour", 22}}}});
        return GroupMetrics(device).requestSpO2().has_value();
    };
    EXPECT_TRUE(hasResult("20260611", {})) << "21 whatever the settings";
    EXPECT_TRUE(hasResult("20260610", {{"nightHour", 22}}));
    EXPECT_FALSE(hasResult("20260610", {}));
    EXPECT_FALSE(hasResult(20260611, {})) << "a number is no key";
}

}  // namespace
}  // namespace lunabrook::test
