#include <gtest/gtest.h>

#include "metrics/group_metrics.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

const Date kMorning = date("2026-06-10T07:00:00+02:00");

// Two rings closed: (1 + 1 + 0.75 + 0.75) / 4.
const Dictionary kLongNight{{"rawSynchTime", kMorning},
                            {"rawRingRating", "1.0|0.75|0.75"},
                            {"rawRingValues", "7200|5400|54.4|9"},
                            {"rawSleepTime", 36000}};

TEST(SleepRingsTest, SaysTheClosedRingsAndTheRating) {
    struct Row {
        const char* name;
        double requiredHours, sleepTime;
        const char *fills, *headline, *rating;
    };
    const Row rows[] = {
        {"two_numbers_are_none", 8, 0, "1.2|0.5", "No sleep rings closed.", "0%"},
        {"the_third_is_read_whole", 8, 0, "1|1|0.52", "2 sleep rings closed.", "63%"},
        {"goal_met_exactly", 8, 28800, "", "1 sleep ring closed.", "25%"},
        {"goal_just_missed", 8, 28799, "", "No sleep rings closed.", "25%"},
        {"negative_counts_and_half_rounds_to_even", 8, 0, "-1|0.5|1", "1 sleep ring closed.", "12%"},
        {"all", 8, 4e4, "1|1.2|1|0", "All sleep rings closed!", "100%"},
        {"four_hours_are_a_goal", 4, 14400, "", "1 sleep ring closed.", "25%"},
        {"less_is_eight", 3.99, 14400, "", "No sleep rings closed.", "12%"},
    };
    for (const Row& row : rows) {
        TestDevice device;
        const Dictionary watch{
            {"rawSynchTime", kMorning}, {"rawSleepTime", row.sleepTime}, {"rawRingRating", row.fills}};
        device.store(
            {{"watchTrackDict", watch}, {"lunabrookConfig", Dictionary{{"requiredHours", row.requiredHours}}}});
        EXPECT_EQ(shown(GroupMetrics(device).requestQuality(), {"siriLabel"}),
                  stringWithFormat("%@ Today's sleep rating is %@.", {row.headline, row.rating}))
            << row.name;
    }
}

TEST(SleepRingsTest, SpeaksGerman) {
    TestDevice device{
        {.locale = "de_DE",
         .languages = {"de"},
         .translations = {
             {"Sleep Rings Closed", "Ringe Geschlossen"}, {"Sleep Rating", "Note des Schlafs"}, {"Quality", "Güte"}}}};
    device.store({{"watchTrackDict", kLongNight}});
    EXPECT_EQ(shown(GroupMetrics(device).requestQuality(), {"siriLabel", "pasteItem"}),
              R"(2 ringe geschlossen. Note des Schlafs: 88%. | {"Sleep%":"125", "Güte%":"100", "Deep%": "75", )"
              R"("bpm%":"75", "Sleep":"10,00", "Güte":"2,00", "Deep": "1,50", "bpm":"54", "NotedesSchlafs":"88"})");
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
    Dictionary watch = kLongNight;
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
    EXPECT_EQ(
        mirrored({{"rawSynchTime", date("2026-06-09T21:01:00+02:00")}}),
        "Swift-ringBPMLabel: -- | Swift-ringDeepLabel: -- | Swift-ringQualityLabel: -- | Swift-ringSleepLabel: --");
}

}  // namespace
}  // namespace lunabrook::test
