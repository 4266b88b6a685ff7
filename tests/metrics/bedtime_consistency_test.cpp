#include <gtest/gtest.h>

#include "metrics/group_metrics.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

TEST(BedtimeConsistencyTest, ComparesTwoPeriods) {
    struct Row {
        const char* name;
        std::optional<Value> average, previous;
        bool showsLatest;
        Shown expected;
    };
    // Seconds after 21:00.
    const Row rows[] = {
        {"a_minute_later_is_consistent",
         3660,
         3600,
         false,
         {{"avgBedtimeDateString", "10:01\u202FPM"},
          {"bedTrend", "#60"},
          {"trendString", "Consistent"},
          {"starsLabel", ""}}},
        {"a_minute_earlier_is_consistent",
         3540,
         3600,
         true,
         {{"avgBedtimeDateString", "10:00\u202FPM"},
          {"bedTrend", "#-60"},
          {"trendString", "Consistent"},
          {"starsLabel", "9:59\u202FPM"}}},
        {"more_than_a_minute",
         3661,
         3600,
         false,
         {{"avgBedtimeDateString", "10:01\u202FPM"},
          {"bedTrend", "#61"},
          {"trendString", "1m later"},
          {"starsLabel", "1m"}}},
        {"earlier",
         2700,
         3600,
         false,
         {{"avgBedtimeDateString", "9:45\u202FPM"},
          {"bedTrend", "#-900"},
          {"trendString", "15m earlier"},
          {"starsLabel", "15m"}}},
        {"latest_as_the_headline_crosses_the_averages",
         2700,
         3600,
         true,
         {{"avgBedtimeDateString", "10:00\u202FPM"},
          {"bedTrend", "#-900"},
          {"trendString", "15m earlier"},
          {"starsLabel", "9:45\u202FPM"}}},
        {"no_previous_counts_as_0",
         1800,
         {},
         false,
         {{"avgBedtimeDateString", "9:30\u202FPM"},
          {"bedTrend", "#1800"},
          {"trendString", "30m later"},
          {"starsLabel", "30m"}}},
    };
    for (const Row& row : rows) {
        TestDevice device;
        Dictionary bank{{"startDate", date("2026-06-09T21:00:00+02:00")}};
        setValue(bank, "averageBedtime", row.average);
        setValue(bank, "prevAverageBedtime", row.previous);
        device.store({{"bankDict", bank}, {"lastConsistency", row.showsLatest}});
        EXPECT_EQ(shown(GroupMetrics(device).requestConsistencyDict()), row.expected) << row.name;
    }
}

TEST(BedtimeConsistencyTest, SpeaksGermanAndNeedsAStart) {
    TestDevice device{
        {.locale = "de_DE", .languages = {"de"}, .translations = {{"later", "später"}, {"Consistent", "Beständig"}}}};
    Dictionary bank{{"startDate", date("2026-06-09T21:00:00+02:00")}, {"averageBedtime", 6300}};
    device.store({{"bankDict", bank}});
    const auto result = GroupMetrics(device).requestConsistencyDict();
    EXPECT_EQ(shown(result, "avgBedtimeDateString"), "22:45");
    EXPECT_EQ(shown(result, "trendString"), shown(result, "starsLabel") + " später");
    bank.insert_or_assign("startDate", 0);
    device.store({{"bankDict", bank}});
    EXPECT_FALSE(GroupMetrics(device).requestConsistencyDict()) << "a number is no date";
}

}  // namespace
}  // namespace lunabrook::test
