#include <gtest/gtest.h>

#include "metrics/group_metrics.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

TEST(BedtimeConsistencyTest, ComparesTwoPeriods) {
    struct Row {
        const char* name;
        std::optional<Value> average, previous;  // seconds after 21:00
        bool showsLatest;
        const char *bedtime, *trend, *trendText, *stars;
    };
    const Row rows[] = {
        {"minute_later", 3660, 3600, false, "10:01\u202FPM", "#60", "Consistent", ""},
        {"minute_earlier", 3540, 3600, true, "10:00\u202FPM", "#-60", "Consistent", "9:59\u202FPM"},
        {"over_a_minute", 3661, 3600, false, "10:01\u202FPM", "#61", "1m later", "1m"},
        {"earlier", 2700, 3600, false, "9:45\u202FPM", "#-900", "15m earlier", "15m"},
        {"averages_cross", 2700, 3600, true, "10:00\u202FPM", "#-900", "15m earlier", "9:45\u202FPM"},
        {"no_previous_is_0", 1800, {}, false, "9:30\u202FPM", "#1800", "30m later", "30m"},
    };
    for (const Row& row : rows) {
        TestDevice device;
        Dictionary bank{{"startDate", date("2026-06-09T21:00:00+02:00")}};
        setValue(bank, "averageBedtime", row.average);
        setValue(bank, "prevAverageBedtime", row.previous);
        device.store({{"bankDict", bank}, {"lastConsistency", row.showsLatest}});
        EXPECT_EQ(shown(GroupMetrics(device).requestConsistencyDict()),
                  stringWithFormat("avgBedtimeDateString: %@ | bedTrend: %@ | starsLabel: %@ | trendString: %@",
                                   {row.bedtime, row.trend, row.stars, row.trendText}))
            << row.name;
    }
}

TEST(BedtimeConsistencyTest, FollowsTheLocaleAndNeedsAStart) {
    TestDevice device{{.locale = "de_DE", .languages = {"de"}, .translations = {{"later", "später"}}}};
    const auto resultFrom = [&](const Value& start) {
        device.store({{"bankDict", Dictionary{{"startDate", start}, {"averageBedtime", 6300}}}});
        return shown(GroupMetrics(device).requestConsistencyDict());
    };
    EXPECT_EQ(resultFrom(date("2026-06-09T21:00:00+02:00")),
              "avgBedtimeDateString: 22:45 | bedTrend: #6300 | starsLabel: 105 Min. | trendString: 105 Min. später");
    EXPECT_EQ(resultFrom(0), "nil") << "a number is no date";
}

}  // namespace
}  // namespace lunabrook::test
