// Readiness and sleep fuel.

#include <gtest/gtest.h>

#include <map>

#include "metrics/group_metrics.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

Dictionary record(double hrv, double hrvBaseline, double rate, double rateBaseline, const char* key = "20260610") {
    return {{"key", key},
            {"hrvTodayVal", hrv},
            {"hrvAverage", hrvBaseline},
            {"bpmTodayVal", rate},
            {"bpmAverage", rateBaseline}};
}

Dictionary watchRecord(double hrv, double rate, const char* time = "2026-06-10T07:00:00+02:00") {
    return {{"rawSynchTime", date(time)}, {"rawHRVVal", hrv}, {"rawWakingVal", rate}};
}

TEST(RecoveryScoreTest, GradesTheScore) {
    // Against baselines of 100; the bounds are strict and double, the score is single, so 1.2 is above its bound and
    // 0.95 is not.
    struct Row {
        double hrv, rate;
        const std::string score, readiness, fuel;  // the score with its stars; the grades
    };
    // clang-format off
    const Row rows[] = {
        {181, 0, "#1.51 | #6", "Superb", "Rocket fuel"}, {180, 0, "#1.5 | #6", "Optimal", "Jet fuel"},
        {150, 0, "#1.2 | #5", "Optimal", "Jet fuel"}, {130, 0, "#1 | #4.2", "Great", "Premium"},
        {125, 0, "#0.95 | #4", "Good", "Plus"}, {112.5, 0, "#0.825 | #3", "OK", "Regular"},
        {80, 0, "#0.55 | #1.25", "Low", "Poor"}, {75, 0, "#0.5 | #1", "Rest", "Bad"},
        // At the baseline HRV scores less than a hair below it.
        {100, 0, "#0.7 | #2", "Low", "Poor"}, {99, 0, "#0.74 | #2.32", "OK", "Regular"},
        // The rate: the points end at a tenth above and a tenth below.
        {0, 100, "#0.95 | #4", "Good", "Plus"}, {0, 105, "#0.7 | #2", "OK", "Regular"},
        {0, 150, "#0.45 | #0.9", "Rest", "Bad"}, {0, 99, "#0.88 | #3.44", "Good", "Plus"},
        {0, 50, "#1.6 | #6", "Superb", "Rocket fuel"},
        // The mean of both, unless one has no points.
        {120, 80, "#1.25 | #5.1667", "Optimal", "Jet fuel"}, {24, 80, "#1.6 | #6", "Superb", "Rocket fuel"},
    };
    // clang-format on
    const std::map<std::string, std::string> stars = {{"Superb", "🥇"},
                                                      {"Optimal", "★★★★★"},
                                                      {"Great", "★★★★⭒"},
                                                      {"Good", "★★★⭒⭒"},
                                                      {"OK", "★★⭒⭒⭒"},
                                                      {"Low", "★⭒⭒⭒⭒"},
                                                      {"Rest", "\U0001F486\u200D\u2642\uFE0F"}};
    for (const Row& row : rows) {
        TestDevice device;
        const Dictionary values = record(row.hrv, 100, row.rate, 100);
        device.store({{"bankDict", Dictionary{{"readyDict", values}, {"octaneDict", values}}}});
        const auto readiness = GroupMetrics(device).requestReadiness();
        const auto fuel = GroupMetrics(device).requestOctane();
        EXPECT_EQ(shown(readiness, {"percentage", "starsValue", "rating"}), row.score + (" | " + row.readiness));
        EXPECT_EQ(shown(fuel, {"percentage", "starsValue", "rating"}), row.score + (" | " + row.fuel));
        device.store({{"readyStars", true}});
        EXPECT_EQ(shown(GroupMetrics(device).requestReadiness(), {"rating"}), stars.at(row.readiness));
    }
}

TEST(RecoveryScoreTest, ChoosesTheSourceOfReadiness) {
    struct Row {
        const char* name;
        Dictionary ready, watch;
        const char* labels;
    };
    const Dictionary yesterday = record(60, 50, 48, 60, "20260609");
    const Row rows[] = {
        {"record_wins", record(60, 50, 0, 60), watchRecord(70, 70), "60 ms | 10 above baseline | -- | "},
        {"record_of_the_rate_wins", record(0, 50, 48, 60), watchRecord(70, 70), "-- |  | 48 bpm | 12 below baseline"},
        {"empty_today", record(0, 50, 0, 60), watchRecord(45, 70),
         "45 ms | 5 below baseline | 70 bpm | 10 above baseline"},
        {"another_day", yesterday, watchRecord(50.5, 60.5), "50 ms | No change | 60 bpm | No change"},
        {"over_half", yesterday, watchRecord(50.51, 59.49), "51 ms | 1 above baseline | 59 bpm | 1 below baseline"},
        {"watch_is_its_own_baseline", record(60, 0, 48, 0, "20260609"), watchRecord(60, 0),
         "60 ms | No change | -- | "},
        {"watch_is_its_own_baseline_of_the_rate", record(60, 50, 48, 0, "20260609"), watchRecord(0, 70),
         "-- |  | 70 bpm | No change"},
        {"watch_knows_the_rate_alone", yesterday, watchRecord(0, 70), "-- |  | 70 bpm | 10 above baseline"},
        {"watch_without_values", yesterday, {{"rawSynchTime", date("2026-06-10T07:00:00+02:00")}}, "nil"},
        {"stale_watch", yesterday, watchRecord(60, 55, "2026-06-09T21:01:00+02:00"), "nil"},
        {"small_numbers", record(1, 1, 1, 1), watchRecord(0, 0), "1 ms | No change | 1 bpm | No change"},
        {"nothing_to_compare", record(60, 0, 48, 0), watchRecord(0, 0), "nil"},
    };
    for (const Row& row : rows) {
        TestDevice device;
        device.store({{"bankDict", Dictionary{{"readyDict", row.ready}}}, {"watchTrackDict", row.watch}});
        const auto result = GroupMetrics(device).requestReadiness();
        EXPECT_EQ(shown(result, {"hrvLabel", "hrvDifLabel", "wakingLabel", "wakingDifLabel"}), row.labels) << row.name;
    }
}

TEST(RecoveryScoreTest, GivesReadiness) {
    TestDevice device;
    device.store({{"bankDict", Dictionary{{"readyDict", record(60, 50, 48, 60)}}}});
    EXPECT_EQ(shown(GroupMetrics(device).requestReadiness()),
              "hrvDifLabel: 10 above baseline | hrvLabel: 60 ms | hrvPoints: #0.9 | hrvTint: #2 | pasteItem: "
              R"({"Stars":"5.17", "HRV":"60", "bpm": "48", "BaselineHRV":"50", "BaselineWakingBPM":"60", )"
              R"("Rating":"Optimal"} | percentage: #1.25 | rating: Optimal | starsValue: #5.1667 | )"
              "todaysReadinessStars: Today's Readiness is optimal. | wakingDifLabel: 12 below baseline | "
              "wakingLabel: 48 bpm | wakingPoints: #1.6 | wakingTint: #2");
    device.store({{"readyStars", true}});
    EXPECT_EQ(shown(GroupMetrics(device).requestReadiness(), {"rating", "todaysReadinessStars"}),
              "★★★★★ | Today's Readiness is 5.17 stars.");
}

TEST(RecoveryScoreTest, GivesSleepFuelWhateverTheWatchAndTheStarsSay) {
    TestDevice device;
    device.store({{"bankDict", Dictionary{{"octaneDict", record(0, 50, 60, 55)}}},
                  {"watchTrackDict", watchRecord(60, 55)},
                  {"readyStars", true}});
    EXPECT_EQ(shown(GroupMetrics(device).requestOctane(), {"hrvLabel", "hrvTint", "wakingTint", "pasteItem"}),
              R"(-- | #0 | #1 | {"Stars":"0.99", "HRV":"0", "bpm": "60", "BaselineSleepHRV":"50", )"
              R"("BaselineSleepBPM":"55", "Rating":"Bad"})");
    EXPECT_EQ(shown(GroupMetrics(device).requestOctane(), {"todaysReadinessStars"}), "Sleep Fuel Rating is bad.");
}

TEST(RecoveryScoreTest, SpeaksGerman) {
    TestDevice device{{.locale = "de_DE",
                       .languages = {"de"},
                       .translations = {{"stars", "sterne"},
                                        {"Today's Readiness", "heutige bereitschaft"},
                                        {"Baseline HRV", "HRV im Mittel"},
                                        {"Optimal", "Bestens"}}}};
    device.store({{"bankDict", Dictionary{{"readyDict", record(60, 50, 48, 60)}}}});
    EXPECT_EQ(shown(GroupMetrics(device).requestReadiness(), {"todaysReadinessStars", "pasteItem"}),
              R"(Heutige Bereitschaft: bestens. | {"Sterne":"5,17", "HRV":"60", "bpm": "48", "HRVimMittel":"50", )"
              R"("BaselineWakingBPM":"60", "Rating":"Bestens"})");
    device.store({{"readyStars", true}});
    EXPECT_EQ(shown(GroupMetrics(device).requestReadiness(), {"todaysReadinessStars"}),
              "Heutige Bereitschaft: 5,17 sterne.");
}

}  // namespace
}  // namespace lunabrook::test
