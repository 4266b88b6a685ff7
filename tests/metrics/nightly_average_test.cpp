// Blood oxygen and respiration.

#include <gtest/gtest.h>

#include "metrics/group_metrics.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

Dictionary bloodOxygenBank(double average, double average7) {
    return {{"spO2Dict", Dictionary{{"key", "20260610"},
                                    {"averageSpO2", average},
                                    {"minSpO2", 89},
                                    {"maxSpO2", 99},
                                    {"averageSpO27", average7},
                                    {"minSpO27", 88},
                                    {"maxSpO27", 98}}}};
}

Dictionary respirationBank(double average, double average7) {
    return {{"respRateDict", Dictionary{{"key", "20260610"},
                                        {"averageRespRate", average},
                                        {"minRespRate", 12.46},
                                        {"maxRespRate", 17.75},
                                        {"averageRespRate7", average7},
                                        {"minRespRate7", 11.25},
                                        {"maxRespRate7", 18}}}};
}

TEST(NightlyAverageTest, MarksRisesAndFallsOfATenth) {
    struct Row {
        const char* name;
        double average, average7;
        const char *oxygenLabel, *respirationLabel, *colour;
    };
    const Row rows[] = {
        {"rise", 96.0, 95.0, "1.0%↗", "1.0↗", "#1"},
        {"fall_without_its_sign", 94.0, 95.0, "1.0%↘", "1.0↘", "#2"},
        {"a_tenth_near_95_falls_short", 95.1, 95.0, "", "", "#0"},
        {"a_tenth_near_95_falls_short_downwards", 95.0, 95.1, "", "", "#0"},
        {"a_tenth_near_14_is_one", 14.6, 14.5, "0.1%↗", "0.1↗", "#1"},
        {"a_tenth_near_14_is_one_downwards", 14.5, 14.6, "0.1%↘", "0.1↘", "#2"},
        {"no_week", 96.0, 0.0, "", "", "#0"},
        {"negative_week", 96.0, -1.0, "", "", "#0"},
    };
    for (const Row& row : rows) {
        TestDevice device;
        device.store({{"bankDict", bloodOxygenBank(row.average, row.average7)}});
        const auto oxygen = GroupMetrics(device).requestSpO2();
        device.store({{"bankDict", respirationBank(row.average, row.average7)}});
        const auto respiration = GroupMetrics(device).requestRespRate();
        EXPECT_EQ(shown(oxygen, "difLabel"), row.oxygenLabel) << row.name;
        EXPECT_EQ(shown(oxygen, "difColour"), row.colour) << row.name;
        EXPECT_EQ(shown(respiration, "difLabel"), row.respirationLabel) << row.name;
        EXPECT_EQ(shown(respiration, "difColour"), row.colour) << row.name;
    }
}

TEST(NightlyAverageTest, GivesBloodOxygen) {
    TestDevice device;
    device.store({{"bankDict", bloodOxygenBank(95.375, 94.25)}});
    const Shown expected = {
        {"title", "Sleep SpO2"},
        {"todaysSpO2Info", "Today's average SpO2 is 95.4%. Today's SpO2 range is 89% to 99%."},
        {"averageSpO2Label", "95.4%"},
        {"averageSpO2RangeLabel", "89% - 99%"},
        {"minSpO2Label", "89%"},
        {"maxSpO2Label", "99%"},
        {"averageSpO2Label7", "⑦ 94.2%"},
        {"averageSpO2RangeLabel7", "⑦ 88% - 98%"},
        {"difLabel", "1.1%↗"},
        {"difColour", "#1"},
        {"averageSpO2", "#95.375"},
        {"minSpO2", "#89"},
        {"maxSpO2", "#99"},
        {"averageSpO27", "#94.25"},
        {"minSpO27", "#88"},
        {"maxSpO27", "#98"},
        {"pasteItem",
         R"({"SpO2":"95.4", "MinSpO2":"89", "MaxSpO2": "99", "SpO2-7":"94.2", "MinSpO2-7":"88" , "MaxSpO2-7":"98"})"},
    };
    EXPECT_EQ(shown(GroupMetrics(device).requestSpO2()), expected);
}

TEST(NightlyAverageTest, GivesRespirationInGerman) {
    TestDevice device{{.locale = "de_DE",
                       .languages = {"de"},
                       .translations = {{"BrPM", "AZ/min"}, {"MinRespRate", "Kleinste"}, {"to", "bis"}}}};
    device.store({{"bankDict", respirationBank(14.6, 14.0)}});
    const Shown expected = {
        {"title", "Respiration Rate"},
        {"todaysRespRateInfo",
         "Today's average respiration rate is 14,6 AZ/min. Today's respiration range is 12,5 bis 17,8."},
        {"averageRespRateLabel", "14,6 AZ/min"},
        {"averageRespRateWidgetLabel", "14,6 "},
        {"averageRespRateRangeLabel", "12,5 - 17,8"},
        {"minRespRateLabel", "12,5"},
        {"maxRespRateLabel", "17,8"},
        {"averageRespRateLabel7", "⑦ 14,0"},
        {"averageRespRateRangeLabel7", "⑦ 11,2 - 18,0"},
        {"difLabel", "0,6↗"},
        {"difColour", "#1"},
        {"averageRespRate", "#14.6"},
        {"minRespRate", "#12.46"},
        {"maxRespRate", "#17.75"},
        {"averageRespRate7", "#14"},
        {"minRespRate7", "#11.25"},
        {"maxRespRate7", "#18"},
        {"pasteItem", R"({"RespRate":"14,6", "Kleinste":"12", "MaxRespRate": "18", "RespRate-7":"14,0", )"
                      R"("Kleinste-7":"11" , "MaxRespRate-7":"18"})"},
    };
    EXPECT_EQ(shown(GroupMetrics(device).requestRespRate()), expected);
}

TEST(NightlyAverageTest, SaysDashesWithoutAnAverage) {
    TestDevice device;
    device.store(
        {{"bankDict", Dictionary{{"spO2Dict", Dictionary{{"key", "20260610"}}},
                                 {"respRateDict", Dictionary{{"key", "20260610"}, {"averageRespRate", -1}}}}}});
    const auto oxygen = GroupMetrics(device).requestSpO2();
    EXPECT_EQ(shown(oxygen, "todaysSpO2Info"), "Today's average SpO2 is --. Today's SpO2 range is -- to --.");
    EXPECT_EQ(shown(oxygen, "averageSpO2RangeLabel"), "missing");
    EXPECT_EQ(shown(oxygen, "averageSpO2Label7"), "--");
    EXPECT_EQ(shown(oxygen, "averageSpO2RangeLabel7"), "--");
    EXPECT_EQ(shown(oxygen, "pasteItem"),
              R"({"SpO2":"0.0", "MinSpO2":"0", "MaxSpO2": "0", "SpO2-7":"0.0", "MinSpO2-7":"0" , "MaxSpO2-7":"0"})");
    const auto respiration = GroupMetrics(device).requestRespRate();
    EXPECT_EQ(shown(respiration, "todaysRespRateInfo"),
              "Today's average respiration rate is --. Today's respiration range is -- to --.");
    EXPECT_EQ(shown(respiration, "averageRespRateRangeLabel"), "missing");
    EXPECT_EQ(shown(respiration, "averageRespRateWidgetLabel"), "--");
}

}  // namespace
}  // namespace lunabrook::test
