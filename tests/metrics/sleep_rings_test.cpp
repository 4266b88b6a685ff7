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

// Two rings closed, (1 + 1 + 0.75 + 0.75) / 4.
const Dictionary& longNight() {
    static const Dictionary kNight = watchRecord({{"rawRingRating", "1.0|0.75|0.75"},
                                                  {"rawRingValues", "7200|5400|54.4|9"},
                                                  {"rawSleepTime", 36000},
                                                  {"showStages", false}});
    return kNight;
}

TEST(SleepRingsTest, SaysTheClosedRingsAndTheRating) {
    struct Row {
        const char* name;
        Dictionary watch;
        std::optional<Value> requiredHours;
        const char* sentence;
    };
    const Row rows[] = {
        {"empty_record", {}, 8, "No sleep rings closed. Today's sleep rating is 0%."},
        {"two_numbers_are_none",
         {{"rawRingRating", "1.2|0.5"}},
         8,
         "No sleep rings closed. Today's sleep rating is 0%."},
        {"no_text_is_none", {{"rawRingRating", 1.5}}, 8, "No sleep rings closed. Today's sleep rating is 0%."},
        {"goal_met_exactly", {{"rawSleepTime", 28800}}, 8, "1 sleep ring closed. Today's sleep rating is 25%."},
        {"goal_just_missed", {{"rawSleepTime", 28799}}, 8, "No sleep rings closed. Today's sleep rating is 25%."},
        {"half_rounds_to_even",
         {{"rawSleepTime", 28800}, {"rawRingRating", "-1|0.5|x"}},
         8,
         "1 sleep ring closed. Today's sleep rating is 12%."},
        {"two", longNight(), 8, "2 sleep rings closed. Today's sleep rating is 88%."},
        {"three", {{"rawRingRating", "1|1|1"}}, 8, "3 sleep rings closed. Today's sleep rating is 75%."},
        {"all",
         {{"rawSleepTime", 40000}, {"rawRingRating", "1|1.2|1.0|0"}},
         8,
         "All sleep rings closed! Today's sleep rating is 100%."},
        {"four_hours_are_enough_of_a_goal",
         {{"rawSleepTime", 14400}},
         4.0,
         "1 sleep ring closed. Today's sleep rating is 25%."},
        {"less_is_eight", {{"rawSleepTime", 14400}}, 3.99, "No sleep rings closed. Today's sleep rating is 12%."},
        {"unset_is_eight", {{"rawSleepTime", 28800}}, {}, "1 sleep ring closed. Today's sleep rating is 25%."},
    };
    for (const Row& row : rows) {
        TestDevice device;
        Dictionary config;
        setValue(config, "requiredHours", row.requiredHours);
        device.store({{"watchTrackDict", watchRecord(row.watch)}, {"lunabrookConfig", config}});
        EXPECT_EQ(shown(GroupMetrics(device).requestQuality(), "siriLabel"), row.sentence) << row.name;
    }
}

TEST(SleepRingsTest, GivesTheWholeResult) {
    TestDevice device;
    device.store({{"watchTrackDict", longNight()}});
    const Shown expected = {
        {"ringSleepPercent", "#1.25"},
        {"ringQualityPercent", "#1"},
        {"ringDeepPercent", "#0.75"},
        {"ringBPMPercent", "#0.75"},
        {"sleepRating", "#0.875"},
        {"ringSleepLabel", "10h 0m"},
        {"ringQualityLabel", "2h 0m"},
        {"ringDeepLabel", "1h 30m"},
        {"ringBPMLabel", "54"},
        {"showStages", "1"},
        {"siriLabel", "2 sleep rings closed. Today's sleep rating is 88%."},
        {"pasteItem", R"({"Sleep%":"125", "REM%":"100", "Deep%": "75", "bpm%":"75", "Sleep":"10.00", "REM":"2.00", )"
                      R"("Deep": "1.50", "bpm":"54", "SleepRating":"88"})"},
    };
    EXPECT_EQ(shown(GroupMetrics(device).requestQuality()), expected);

    Dictionary stale = longNight();
    stale.insert_or_assign("rawSynchTime", date("2026-06-09T21:01:00+02:00"));
    device.store({{"watchTrackDict", stale}});
    EXPECT_FALSE(GroupMetrics(device).requestQuality());
}

TEST(SleepRingsTest, SpeaksGerman) {
    TestDevice device{{.locale = "de_DE",
                       .languages = {"de"},
                       .translations = {{"Sleep Rings Closed", "Schlafringe Geschlossen"},
                                        {"Sleep Rating", "Note des Schlafs"},
                                        {"Sleep", "Schlaf"},
                                        {"Quality", "Güte"},
                                        {"Deep", "Tief"}}}};
    Dictionary watch = longNight();
    watch.erase("showStages");
    device.store({{"watchTrackDict", watch}});
    const auto result = GroupMetrics(device).requestQuality();
    EXPECT_EQ(shown(result, "siriLabel"), "2 schlafringe geschlossen. Note des Schlafs: 88%.");
    EXPECT_EQ(shown(result, "showStages"), "missing");
    EXPECT_EQ(shown(result, "pasteItem"),
              R"({"Schlaf%":"125", "Güte%":"100", "Tief%": "75", "bpm%":"75", "Schlaf":"10,00", "Güte":"2,00", )"
              R"("Tief": "1,50", "bpm":"54", "NotedesSchlafs":"88"})");
}

TEST(SleepRingsTest, MirrorsTheLabelsForSwift) {
    TestDevice device;
    const auto mirrored = [&](const std::optional<Dictionary>& watch) {
        device.store({{"watchTrackDict", watch ? Value(*watch) : Value("none")}, {"other", 1}});
        GroupMetrics(device).requestQualityForSwift();
        Dictionary stored = device.stored();
        stored.erase("watchTrackDict");
        return shown(stored);
    };
    Dictionary watch = longNight();
    Shown expected = {{"Swift-HasData", "1"},
                      {"Swift-ringSleepLabel", "10h 0m"},
                      {"Swift-ringQualityLabel", "Ⓡ 2h 0m"},
                      {"Swift-ringDeepLabel", "1h 30m"},
                      {"Swift-ringBPMLabel", "54"},
                      {"other", "#1"}};
    EXPECT_EQ(mirrored(watch), expected);
    watch.erase("showStages");
    expected["Swift-ringQualityLabel"] = "★ 2h 0m";
    EXPECT_EQ(mirrored(watch), expected);
    expected = {{"Swift-ringSleepLabel", "--"},
                {"Swift-ringQualityLabel", "--"},
                {"Swift-ringDeepLabel", "--"},
                {"Swift-ringBPMLabel", "--"},
                {"other", "#1"}};
    EXPECT_EQ(mirrored(std::nullopt), expected);
}

}  // namespace
}  // namespace lunabrook::test
