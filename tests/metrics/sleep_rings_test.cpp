#include <gtest/gtest.h>

#include "metrics/group_metrics.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

Dictionary watchRecord(Dictionary more) {
    more.emplace("rawSynchTime", date("2026-06-10T07:00:00+02:00"));
    return more;
}

// Two rings closed: (1 + 1 + 0.75 + 0.75) / 4.
Dictionary longNight() {
    return watchRecord(
        {{"rawRingRating", "1.0|0.75|0.75"}, {"rawRingValues", "7200|5400|54.4|9"}, {"rawSleepTime", 36000}});
}

TEST(SleepRingsTest, SaysTheClosedRingsAndTheRating) {
    struct Row {
        const char* name;
        Dictionary watch;
        std::optional<Value> requiredHours;
        const char *headline, *rating;
    };
    const Row rows[] = {
        {"empty_record", {}, 8, "No sleep rings closed.", "0%"},
        {"two_numbers_are_none", {{"rawRingRating", "1.2|0.5"}}, 8, "No sleep rings closed.", "0%"},
        {"goal_met_exactly", {{"rawSleepTime", 28800}}, 8, "1 sleep ring closed.", "25%"},
        {"goal_just_missed", {{"rawSleepTime", 28799}}, 8, "No sleep rings closed.", "25%"},
        {"negative_counts_and_half_rounds_to_even", {{"rawRingRating", "-1|0.5|1"}}, 8, "1 sleep ring closed.", "12%"},
        {"two", longNight(), 8, "2 sleep rings closed.", "88%"},
        {"all", {{"rawSleepTime", 4e4}, {"rawRingRating", "1|1.2|1|0"}}, 8, "All sleep rings closed!", "100%"},
        {"four_hours_are_a_goal", {{"rawSleepTime", 14400}}, 4.0, "1 sleep ring closed.", "25%"},
        {"less_is_eight", {{"rawSleepTime", 14400}}, 3.99, "No sleep rings closed.", "12%"},
        {"unset_is_eight", {{"rawSleepTime", 28800}}, {}, "1 sleep ring closed.", "25%"},
    };
    for (const Row& row : rows) {
        TestDevice device;
        Dictionary config;
        setValue(config, "requiredHours", row.requiredHours);
        device.store({{"watchTrackDict", watchRecord(row.watch)}, {"lunabrookConfig", config}});
        EXPECT_EQ(shown(GroupMetrics(device).requestQuality(), "siriLabel"),
                  std::string(row.headline) + " Today's sleep rating is " + row.rating + ".")
            << row.name;
    }
}

TEST(SleepRingsTest, SpeaksGerman) {
    TestDevice device{
        {.locale = "de_DE",
         .languages = {"de"},
         .translations = {
             {"Sleep Rings Closed", "Ringe Geschlossen"}, {"Sleep Rating", "Note des Schlafs"}, {"Quality", "Güte"}}}};
    device.store({{"watchTrackDict", longNight()}});
    const auto result = GroupMetrics(device).requestQuality();
    EXPECT_EQ(shown(result, "siriLabel"), "2 ringe geschlossen. Note des Schlafs: 88%.");
    EXPECT_EQ(shown(result, "pasteItem"),
              R"({"Sleep%":"125", "Güte%":"100", "Deep%": "75", "bpm%":"75", "Sleep":"10,00", "Güte":"2,00", )"
              R"("Deep": "1,50", "bpm":"54", "NotedesSchlafs":"88"})");
}

TEST(SleepRingsTest, GivesTheWholeResultAndMirrorsItForSwift) {
    TestDevice device;
    const auto mirrored = [&](const Dictionary& watch) {
        device.store({{"watchTrackDict", watch}});
        GroupMetrics(device).requestQualityForSwift();
        Dictionary stored = device.stored();
        stored.erase("watchTrackDict");
        return shown(stored);
    };
    Dictionary watch = longNight();
    for (const std::string mark : {"\u2605", "\u24C7"}) {
        EXPECT_EQ(mirrored(watch),
                  "Swift-HasData: 1 | Swift-ringBPMLabel: 54 | Swift-ringDeepLabel: 1h 30m | Swift-ringQualityLabel: " +
                      mark + " 2h 0m | Swift-ringSleepLabel: 10h 0m");
        watch.emplace("showStages", false);
    }
    EXPECT_EQ(shown(GroupMetrics(device).requestQuality()),
              R"(pasteItem: {"Sleep%":"125", "REM%":"100", "Deep%": "75", "bpm%":"75", "Sleep":"10.00", "REM":"2.00", )"
              R"("Deep": "1.50", "bpm":"54", "SleepRating":"88"} | ringBPMLabel: 54 | ringBPMPercent: #0.75 | )"
              "ringDeepLabel: 1h 30m | ringDeepPercent: #0.75 | ringQualityLabel: 2h 0m | ringQualityPercent: #1 | "
              "ringSleepLabel: 10h 0m | ringSleepPercent: #1.25 | showStages: 1 | "
              "siriLabel: 2 sleep rings closed. Today's sleep rating is 88%. | sleepRating: #0.875");
    watch.insert_or_assign("rawSynchTime", date("2026-06-09T21:01:00+02:00"));
    EXPECT_EQ(
        mirrored(watch),
        "Swift-ringBPMLabel: -- | Swift-ringDeepLabel: -- | Swift-ringQualityLabel: -- | Swift-ringSleepLabel: --");
}

}  // namespace
}  // namespace lunabrook::test
