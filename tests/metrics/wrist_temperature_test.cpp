#include <gtest/gtest.h>

#include "metrics/group_metrics.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

std::optional<Dictionary> resultFor(TestDevice& device, double today, double baseline, const char* key = "20260610") {
    device.store(
        {{"bankDict",
          Dictionary{{"wristTempKey", key}, {"wristTempTodayValue", today}, {"wristTempAverage28", baseline}}}});
    return GroupMetrics(device).requestWristTemp();
}

TEST(WristTemperatureTest, ComparesWithTheBaseline) {
    struct Row {
        const char* name;
        double today, baseline;
        const char *label, *sentence;
    };
    const Row rows[] = {
        {"rise", 34.50, 34.40, "0.10°↗", "34.50°. +0.10° above baseline."},
        {"fall_keeps_its_sign_in_the_sentence_only", 34.20, 34.40, "0.20°↘", "34.20°. -0.20° below baseline."},
        {"under_the_bound", 34.50, 34.495, "0.00°=", "34.50°. No change from baseline."},
        {"a_hundredth_falls_short", 34.51, 34.50, "0.00°=", "34.51°. No change from baseline."},
        {"values_below_one", 0.50, 0.50, "0.00°=", "0.50°. No change from baseline."},
        {"two_hundredths", 34.52, 34.50, "0.02°↗", "34.52°. +0.02° above baseline."},
    };
    TestDevice device;
    for (const Row& row : rows) {
        EXPECT_EQ(shown(resultFor(device, row.today, row.baseline), {"wristTempDifLabel", "wristTempTodayInfo"}),
                  stringWithFormat("%@ | Today's temperature is %@", {row.label, row.sentence}))
            << row.name;
    }
    EXPECT_FALSE(resultFor(device, 34.50, 0)) << "no baseline";
    EXPECT_FALSE(resultFor(device, -1, 34.50)) << "no value of today";
    EXPECT_FALSE(resultFor(device, 34.50, 34.40, "20260609"));
    for (const char* alone : {"wristTempTodayValue", "wristTempAverage28"}) {
        device.store({{"bankDict", Dictionary{{"wristTempKey", "20260610"}, {alone, 34.50}}}});
        EXPECT_FALSE(GroupMetrics(device).requestWristTemp()) << alone;
    }
}

TEST(WristTemperatureTest, GivesTheWholeResultInGerman) {
    TestDevice device{
        {.locale = "de_DE",
         .languages = {"de"},
         .translations = {{"Today's temperature is %@. %@ %@ baseline.", "Heute %1$@, %3$@ dem Mittel: %2$@."},
                          {"below", "unter"}}}};
    EXPECT_EQ(shown(resultFor(device, 34.20, 34.40)),
              R"(pasteItem: {"Temperature":"34,20", "Baseline":"34,40", "Variance": "-0,20"} | )"
              "wristTempAverage28Label: 34,40° | wristTempDifLabel: 0,20°↘ | wristTempScore: #0 | "
              "wristTempTodayInfo: Heute 34,20°, unter dem Mittel: -0,20°. | wristTempTodayLabel: 34,20°");
}

}  // namespace
}  // namespace lunabrook::test
