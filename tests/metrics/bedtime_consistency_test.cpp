#include <gtest/gtest.h>

#include "metrics/group_metrics.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

const Date kStart = date("2026-06-09T21:00:00+02:00");

TEST(BedtimeConsistencyTest, ComparesTwoPeriods) {
    struct Row {
        const char* name;
        int average, previous;  // seconds after 21:00
        bool showsLatest;
        const char *bedtime, *trend, *trendText, *stars;
    };
    const Row rows[] = {
        {"minute_later", 3660, 3600, false, "10:01\u202FPM", "#60", "Consistent", ""},
        {"minute_earlier", 3540, 3600, true, "10:00\u202FPM", "#-60", "Consistent", "9:59\u202FPM"},
        {"over_a_minute", 3661, 3600, false, "10:01\u202FPM", "#61", "1m later", "1m"},
        {"earlier", 2700, 3600, false, "9:45\u202FPM", "#-900", "15m earlier", "15m"},
        {"averages_cross", 2700, 3600, true, "10:00\u202FPM", "#-900", "15m earlier", "9:45\u202FPM"},
    };
    for (const Row& row : rows) {
        TestDevice device;
        const Dictionary bank{
            {"startDate", kStart}, {"averageBedtime", row.average}, {"prevAverageBedtime", row.previous}};
        device.store({{"bankDict", bank}, {"lastConsistency", row.showsLatest}});
        EXPECT_EQ(shown(GroupMetrics(device).requestConsistencyDict(),
                        {"avgBedtimeDateString", "bedTrend", "trendString", "starsLabel"}),
                  stringWithFormat("%@ | %@ | %@ | %@", {row.bedtime, row.trend, row.trendText, row.stars}))
            << row.name;
    }
}

TEST(BedtimeConsistencyTest, FollowsTheLocaleAndNeedsAStart) {
    TestDevice device{{.locale = "de_DE", .languages = {"de"}, .translations = {{"later", "später"}}}};
    device.store({{"bankDict", Dictionary{{"startDate", kStart}, {"averageBedtime", 6300}}}});
    EXPECT_EQ(shown(GroupMetrics(device).requestConsistencyDict()),
              "avgBedtimeDateString: 22:45 | bedTrend: #6300 | starsLabel: 105 Min. | trendString: 105 Min. später");
    device.store({{"bankDict", Dictionary{{"startDate", 0}}}});
    EXPECT_EQ(shown(GroupMetrics(device).requestConsistencyDict()), "nil") << "a number is no date";
}

}  // namespace
}  // namespace lunabrook::test
