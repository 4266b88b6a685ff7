// Blood oxygen and respiration.

#include <gtest/gtest.h>

#include "metrics/group_metrics.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

// Both metrics with the same numbers: minimum 12.46, maximum 17.75, 11.25 and 18 in the week.
Dictionary bankOf(double average, double average7) {
    const auto record = [&](const std::string& name) {
        return Dictionary{{"key", "20260610"},     {"average" + name, average},        {"min" + name, 12.46},
                          {"max" + name, 17.75},   {"average" + name + "7", average7}, {"min" + name + "7", 11.25},
                          {"max" + name + "7", 18}};
    };
    return {{"spO2Dict", record("SpO2")}, {"respRateDict", record("RespRate")}};
}

TEST(NightlyAverageTest, MarksRisesAndFallsOfATenth) {
    struct Row {
        const char* name;
        double average, average7;
        const char *oxygen, *respiration;  // label and colour
    };
    const Row rows[] = {
        {"rise", 96.0, 95.0, "1.0%↗ | #1", "1.0↗ | #1"},
        {"fall_without_its_sign", 94.0, 95.0, "1.0%↘ | #2", "1.0↘ | #2"},
        {"a_tenth_near_95_falls_short", 95.1, 95.0, " | #0", " | #0"},
        {"a_tenth_near_14_is_one", 14.6, 14.5, "0.1%↗ | #1", "0.1↗ | #1"},
        {"a_tenth_near_14_is_one_downwards", 14.5, 14.6, "0.1%↘ | #2", "0.1↘ | #2"},
        {"no_week", 96.0, 0.0, " | #0", " | #0"},
    };
    for (const Row& row : rows) {
        TestDevice device;
        device.store({{"bankDict", bankOf(row.average, row.average7)}});
        EXPECT_EQ(shown(GroupMetrics(device).requestSpO2(), {"difLabel", "difColour"}), row.oxygen) << row.name;
        EXPECT_EQ(shown(GroupMetrics(device).requestRespRate(), {"difLabel", "difColour"}), row.respiration)
            << row.name;
    }
}

TEST(NightlyAverageTest, GivesBloodOxygen) {
    TestDevice device;
    device.store({{"bankDict", bankOf(95.375, 94.25)}});
    EXPECT_EQ(
        shown(GroupMetrics(device).requestSpO2()),
        "averageSpO2: #95.375 | averageSpO27: #94.25 | averageSpO2Label: 95.4% | averageSpO2Label7: ⑦ 94.2% | "
        "averageSpO2RangeLabel: 12% - 18% | averageSpO2RangeLabel7: ⑦ 11% - 18% | difColour: #1 | difLabel: 1.1%↗ | "
        "maxSpO2: #17.75 | maxSpO27: #18 | maxSpO2Label: 18% | minSpO2: #12.46 | minSpO27: #11.25 | "
        R"(minSpO2Label: 12% | pasteItem: {"SpO2":"95.4", "MinSpO2":"12", "MaxSpO2": "18", "SpO2-7":"94.2", )"
        R"("MinSpO2-7":"11" , "MaxSpO2-7":"18"} | title: Sleep SpO2 | )"
        "todaysSpO2Info: Today's average SpO2 is 95.4%. Today's SpO2 range is 12% to 18%.");
}

TEST(NightlyAverageTest, GivesRespirationInGerman) {
    TestDevice device{{.locale = "de_DE",
                       .languages = {"de"},
                       .translations = {{"BrPM", "AZ/min"}, {"MinRespRate", "Kleinste"}, {"to", "bis"}}}};
    device.store({{"bankDict", bankOf(14.6, 14.0)}});
    EXPECT_EQ(
        shown(GroupMetrics(device).requestRespRate()),
        "averageRespRate: #14.6 | averageRespRate7: #14 | averageRespRateLabel: 14,6 AZ/min | averageRespRateLabel7: "
        "⑦ 14,0 | averageRespRateRangeLabel: 12,5 - 17,8 | averageRespRateRangeLabel7: ⑦ 11,2 - 18,0 | "
        "averageRespRateWidgetLabel: 14,6  | difColour: #1 | difLabel: 0,6↗ | maxRespRate: #17.75 | maxRespRate7: #18 "
        "| maxRespRateLabel: 17,8 | minRespRate: #12.46 | minRespRate7: #11.25 | minRespRateLabel: 12,5 | "
        R"(pasteItem: {"RespRate":"14,6", "Kleinste":"12", "MaxRespRate": "18", "RespRate-7":"14,0", )"
        R"("Kleinste-7":"11" , "MaxRespRate-7":"18"} | title: Respiration Rate | todaysRespRateInfo: )"
        "Today's average respiration rate is 14,6 AZ/min. Today's respiration range is 12,5 bis 17,8.");
}

TEST(NightlyAverageTest, SaysDashesWithoutAnAverage) {
    TestDevice device;
    const Dictionary record{{"key", "20260610"}, {"averageRespRate", -1}};
    device.store({{"bankDict", Dictionary{{"spO2Dict", record}, {"respRateDict", record}}}});
    EXPECT_EQ(shown(GroupMetrics(device).requestSpO2(),
                    {"averageSpO2", "averageSpO2Label", "averageSpO2Label7", "averageSpO2RangeLabel",
                     "averageSpO2RangeLabel7", "todaysSpO2Info"}),
              "#0 | -- | -- | missing | -- | Today's average SpO2 is --. Today's SpO2 range is -- to --.");
    EXPECT_EQ(shown(GroupMetrics(device).requestRespRate(), {"averageRespRate", "averageRespRateWidgetLabel"}),
              "#-1 | --");
}

}  // namespace
}  // namespace lunabrook::test
