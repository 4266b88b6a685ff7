// Readiness and sleep fuel.

#include <gtest/gtest.h>

#include "metrics/group_metrics.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

Dictionary record(Value hrv, Value hrvBaseline, Value rate, Value rateBaseline, const char* key = "20260610") {
    return {{"key", key},
            {"hrvTodayVal", std::move(hrv)},
            {"hrvAverage", std::move(hrvBaseline)},
            {"bpmTodayVal", std::move(rate)},
            {"bpmAverage", std::move(rateBaseline)}};
}

Dictionary watchRecord(double hrv, double rate) {
    return {{"rawSynchTime", date("2026-06-10T07:00:00+02:00")}, {"rawHRVVal", hrv}, {"rawWakingVal", rate}};
}

TEST(RecoveryScoreTest, GradesTheScore) {
    // Against baselines of 100; the bounds are strict and double, the score is single, so 1.2 is above its bound and
    // 0.95 is not.
    struct Row {
        const char* name;
        double hrv, rate;
        const char *readiness, *fuel, *stars, *score;
    };
    const Row rows[] = {
        {"above_1.5", 181, 0, "Superb", "Rocket fuel", "#6", "#1.51"},
        {"at_1.5", 180, 0, "Optimal", "Jet fuel", "#6", "#1.5"},
        {"in_1.2", 160, 0, "Optimal", "Jet fuel", "#5.3333", "#1.3"},
        {"at_1.2", 150, 0, "Optimal", "Jet fuel", "#5", "#1.2"},
        {"in_0.95", 130, 0, "Great", "Premium", "#4.2", "#1"},
        {"at_0.95", 125, 0, "Good", "Plus", "#4", "#0.95"},
        {"in_0.825", 120, 0, "Good", "Plus", "#3.6", "#0.9"},
        {"at_0.825", 112.5, 0, "OK", "Regular", "#3", "#0.825"},
        {"in_0.7", 110, 0, "OK", "Regular", "#2.8", "#0.8"},
        {"at_the_baseline", 100, 0, "Low", "Poor", "#2", "#0.7"},
        {"a_hair_below_it_is_better", 99, 0, "OK", "Regular", "#2.32", "#0.74"},
        {"in_0.5", 80, 0, "Low", "Poor", "#1.25", "#0.55"},
        {"at_0.5", 75, 0, "Rest", "Bad", "#1", "#0.5"},
        {"lowest", 30, 0, "Rest", "Bad", "#0.1", "#0.05"},
        {"rate_at_the_baseline", 0, 100, "Good", "Plus", "#4", "#0.95"},
        {"rate_above", 0, 105, "OK", "Regular", "#2", "#0.7"},
        {"rate_a_tenth_above", 0, 110, "Rest", "Bad", "#0.9", "#0.45"},
        {"rate_capped_above", 0, 150, "Rest", "Bad", "#0.9", "#0.45"},
        {"rate_below", 0, 99, "Good", "Plus", "#3.44", "#0.88"},
        {"rate_capped_below", 0, 50, "Superb", "Rocket fuel", "#6", "#1.6"},
        {"mean_of_both", 120, 80, "Optimal", "Jet fuel", "#5.1667", "#1.25"},
        {"worthless_hrv_does_not_count", 24, 80, "Superb", "Rocket fuel", "#6", "#1.6"},
    };
    for (const Row& row : rows) {
        TestDevice device;
        const Dictionary values = record(row.hrv, 100, row.rate, 100);
        device.store({{"bankDict", Dictionary{{"readyDict", values}, {"octaneDict", values}}}});
        const auto readiness = GroupMetrics(device).requestReadiness();
        const auto fuel = GroupMetrics(device).requestOctane();
        EXPECT_EQ(shown(readiness, "rating"), row.readiness) << row.name;
        EXPECT_EQ(shown(readiness, "starsValue"), row.stars) << row.name;
        EXPECT_EQ(shown(readiness, "percentage"), row.score) << row.name;
        EXPECT_EQ(shown(fuel, "rating"), row.fuel) << row.name;
        EXPECT_EQ(shown(fuel, "starsValue"), row.stars) << row.name;
    }
}

TEST(RecoveryScoreTest, ChoosesTheSourceOfReadiness) {
    struct Row {
        const char* name;
        Dictionary ready;
        std::optional<Dictionary> watch;
        const char *hrv, *rate;
    };
    const auto yesterday = [](double hrvBaseline, double rateBaseline) {
        return record(60, hrvBaseline, 48, rateBaseline, "20260609");
    };
    Dictionary stale = watchRecord(60, 55);
    stale.insert_or_assign("rawSynchTime", date("2026-06-09T21:01:00+02:00"));
    const Row rows[] = {
        {"record_of_today", record(60, 50, 48, 60), {}, "60 ms, 10 above baseline", "48 bpm, 12 below baseline"},
        {"record_wins", record(60, 50, 0, 60), watchRecord(70, 70), "60 ms, 10 above baseline", "--, "},
        {"empty_today", record(0, 50, 0, 60), watchRecord(45, 70), "45 ms, 5 below baseline",
         "70 bpm, 10 above baseline"},
        {"another_day", yesterday(50, 60), watchRecord(50.5, 60.5), "50 ms, No change", "60 bpm, No change"},
        {"over_half", yesterday(50, 60), watchRecord(50.51, 59.49), "51 ms, 1 above baseline",
         "59 bpm, 1 below baseline"},
        {"watch_is_its_own_baseline", yesterday(0, 0), watchRecord(60, 0), "60 ms, No change", "--, "},
        {"neither", yesterday(50, 60), {}, "missing, missing", "missing, missing"},
        {"stale_watch", yesterday(50, 60), stale, "missing, missing", "missing, missing"},
        {"nothing_to_compare", record(60, 0, 48, 0), {}, "missing, missing", "missing, missing"},
    };
    for (const Row& row : rows) {
        TestDevice device;
        Dictionary keys{{"bankDict", Dictionary{{"readyDict", row.ready}}}};
        setValue(keys, "watchTrackDict", row.watch);
        device.store(keys);
        const auto result = GroupMetrics(device).requestReadiness();
        EXPECT_EQ(shown(result, "hrvLabel") + ", " + shown(result, "hrvDifLabel"), row.hrv) << row.name;
        EXPECT_EQ(shown(result, "wakingLabel") + ", " + shown(result, "wakingDifLabel"), row.rate) << row.name;
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
    const auto stars = GroupMetrics(device).requestReadiness();
    EXPECT_EQ(shown(stars, "rating"), "★★★★★");
    EXPECT_EQ(shown(stars, "todaysReadinessStars"), "Today's Readiness is 5.17 stars.");
    device.store({{"bankDict", Dictionary{{"readyDict", record(30, 100, 0, 0)}}}});
    EXPECT_EQ(shown(GroupMetrics(device).requestReadiness(), "rating"), "\U0001F486\u200D\u2642\uFE0F");
}

TEST(RecoveryScoreTest, GivesSleepFuelOfItsOwnNightAlone) {
    TestDevice device;
    const auto resultOf = [&](const Dictionary& octane) {
        const Dictionary bank{{"octaneDict", octane}};
        device.store({{"bankDict", bank}, {"watchTrackDict", watchRecord(60, 55)}, {"readyStars", true}});
        return GroupMetrics(device).requestOctane();
    };
    EXPECT_EQ(shown(resultOf(record(0, 50, 60, 55))),
              "hrvDifLabel:  | hrvLabel: -- | hrvPoints: #0 | hrvTint: #0 | pasteItem: "
              R"({"Stars":"0.99", "HRV":"0", "bpm": "60", "BaselineSleepHRV":"50", "BaselineSleepBPM":"55", )"
              R"("Rating":"Bad"} | percentage: #0.4955 | rating: Bad | starsValue: #0.9909 | )"
              "todaysReadinessStars: Sleep Fuel Rating is bad. | wakingDifLabel: 5 above baseline | "
              "wakingLabel: 60 bpm | wakingPoints: #0.4955 | wakingTint: #1");
    EXPECT_EQ(shown(resultOf(record(70, 50, 50, 55)), "starsValue"), "#5.3788");
    EXPECT_FALSE(resultOf(record(70, 0, 50, 0))) << "no baseline is taken from the watch";
    EXPECT_FALSE(resultOf(record(70, 50, 50, 55, "20260609")));
}

TEST(RecoveryScoreTest, SpeaksGerman) {
    TestDevice device{{.locale = "de_DE",
                       .languages = {"de"},
                       .translations = {{"stars", "sterne"},
                                        {"Today's Readiness", "heutige bereitschaft"},
                                        {"Baseline HRV", "HRV im Mittel"},
                                        {"Optimal", "Bestens"}}}};
    device.store({{"bankDict", Dictionary{{"readyDict", record(60, 50, 48, 60)}}}});
    const auto words = GroupMetrics(device).requestReadiness();
    EXPECT_EQ(shown(words, "todaysReadinessStars"), "Heutige Bereitschaft: bestens.");
    EXPECT_EQ(shown(words, "pasteItem"), R"({"Sterne":"5,17", "HRV":"60", "bpm": "48", "HRVimMittel":"50", )"
                                         R"("BaselineWakingBPM":"60", "Rating":"Bestens"})");
    device.store({{"readyStars", true}});
    EXPECT_EQ(shown(GroupMetrics(device).requestReadiness(), "todaysReadinessStars"),
              "Heutige Bereitschaft: 5,17 sterne.");
}

}  // namespace
}  // namespace lunabrook::test
