#include <gtest/gtest.h>

#include "metrics/group_metrics.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

Dictionary bankWith(Value today, Value baseline, const char* key = "20260610") {
    return {
        {"wristTempKey", key}, {"wristTempTodayValue", std::move(today)}, {"wristTempAverage28", std::move(baseline)}};
}

TEST(WristTemperatureTest, ComparesWithTheBaseline) {
    struct Row {
        const char* name;
        double today, baseline;
        const char *label, *sentence, *variance;
    };
    const Row rows[] = {
        {"rise", 34.50, 34.40, "0.10°↗", "Today's temperature is 34.50°. +0.10° above baseline.", "0.10"},
        {"fall_keeps_its_sign_in_the_sentence_only", 34.20, 34.40, "0.20°↘",
         "Today's temperature is 34.20°. -0.20° below baseline.", "-0.20"},
        {"under_the_bound", 34.50, 34.495, "0.00°=", "Today's temperature is 34.50°. No change from baseline.", "0.01"},
        {"a_hundredth_falls_short", 34.51, 34.50, "0.00°=", "Today's temperature is 34.51°. No change from baseline.",
         "0.01"},
        {"two_hundredths", 34.52, 34.50, "0.02°↗", "Today's temperature is 34.52°. +0.02° above baseline.", "0.02"},
    };
    for (const Row& row : rows) {
        TestDevice device;
        device.store({{"bankDict", bankWith(row.today, row.baseline)}});
        const auto result = GroupMetrics(device).requestWristTemp();
        EXPECT_EQ(shown(result, "wristTempDifLabel"), row.label) << row.name;
        EXPECT_EQ(shown(result, "wristTempTodayInfo"), row.sentence) << row.name;
        EXPECT_TRUE(shown(result, "pasteItem").ends_with(std::string(R"("Variance": ")") + row.variance + "\"}"))
            << row.name;
    }
}

TEST(WristTemperatureTest, GivesTheWholeResultInGerman) {
    TestDevice device{{.locale = "de_DE",
                       .languages = {"de"},
                       .translations = {{"Today's temperature is %@. %@ %@ baseline.",
                                         "Heute %1$@, das liegt %3$@ dem Mittel: %2$@."},
                                        {"below", "unter"},
                                        {"Temperature", "Temperatur"}}}};
    Dictionary bank = bankWith(34.20, 34.40);
    bank.emplace("wristTempScore", 0.5);
    device.store({{"bankDict", bank}});
    const Shown expected = {
        {"wristTempTodayLabel", "34,20°"},
        {"wristTempAverage28Label", "34,40°"},
        {"wristTempDifLabel", "0,20°↘"},
        {"wristTempTodayInfo", "Heute 34,20°, das liegt unter dem Mittel: -0,20°."},
        {"wristTempScore", "#0.5"},
        {"pasteItem", R"({"Temperatur":"34,20", "Baseline":"34,40", "Variance": "-0,20"})"},
    };
    EXPECT_EQ(shown(GroupMetrics(device).requestWristTemp()), expected);
}

TEST(WristTemperatureTest, NeedsBothValuesOfTheReportDay) {
    TestDevice device;
    const auto requestWith = [&](const Value& bank) {
        device.store({{"bankDict", bank}});
        return GroupMetrics(device).requestWristTemp();
    };
    EXPECT_EQ(shown(requestWith(bankWith(34.5, 34.4)), "wristTempScore"), "#0");
    EXPECT_FALSE(requestWith(bankWith(34.5, 0)));
    EXPECT_FALSE(requestWith(bankWith(0, 34.5)));
    EXPECT_FALSE(requestWith(bankWith("none", -34.5)));
    EXPECT_FALSE(requestWith(bankWith(34.5, 34.4, "20260609")));
    EXPECT_FALSE(requestWith("broken"));
}

}  // namespace
}  // namespace lunabrook::test
