#include <gtest/gtest.h>

#include "metrics/group_metrics.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

Dictionary bankOf(double today, double baseline, const char* key = "20260610") {
    return {{"wristTempKey", key}, {"wristTempTodayValue", today}, {"wristTempAverage28", baseline}};
}

TEST(WristTemperatureTest, ComparesWithTheBaseline) {
    struct Row {
        const char* name;
        double today, baseline;
        const char *label, *sentence;
        const char* key = "20260610";
    };
    const Row rows[] = {
        {"rise", 34.50, 34.40, "0.10°↗", "34.50°. +0.10° above baseline."},
        {"fall_keeps_its_sign_in_the_sentence_only", 34.20, 34.40, "0.20°↘", "34.20°. -0.20° below baseline."},
        {"under_the_bound", 34.50, 34.495, "0.00°=", "34.50°. No change from baseline."},
        {"a_hundredth_falls_short", 34.51, 34.50, "0.00°=", "34.51°. No change from baseline."},
        {"two_hundredths", 34.52, 34.50, "0.02°↗", "34.52°. +0.02° above baseline."},
        {"no_baseline", 34.50, 0, "missing", nullptr},
        {"no_value_of_today", -1, 34.50, "missing", nullptr},
        {"of_another_day", 34.50, 34.40, "missing", nullptr, "20260609"},
    };
    for (const Row& row : rows) {
        TestDevice device;
        device.store({{"bankDict", bankOf(row.today, row.baseline, row.key)}});
        const auto result = GroupMetrics(device).requestWristTemp();
        const std::string sentence = row.sentence ? std::string("Today's temperature is ") + row.sentence : "missing";
        EXPECT_EQ(shown(result, "wristTempDifLabel"), row.label) << row.name;
        EXPECT_EQ(shown(result, "wristTempTodayInfo"), sentence) << row.name;
    }
}

TEST(WristTemperatureTest, GivesTheWholeResultInGerman) {
    TestDevice device{
        {.locale = "de_DE",
         .languages = {"de"},
         .translations = {{"Today's temperature is %@. %@ %@ baseline.", "Heute %1$@, %3$@ dem Mittel: %2$@."},
                          {"below", "unter"}}}};
    device.store({{"bankDict", bankOf(34.20, 34.40)}});
    EXPECT_EQ(shown(GroupMetrics(device).requestWristTemp()),
              R"(pasteItem: {"Temperature":"34,20", "Baseline":"34,40", "Variance": "-0,20"} | )"
              "wristTempAverage28Label: 34,40° | wristTempDifLabel: 0,20°↘ | wristTempScore: #0 | "
              "wristTempTodayInfo: Heute 34,20°, unter dem Mittel: -0,20°. | wristTempTodayLabel: 34,20°");
}

}  // namespace
}  // namespace lunabrook::test
