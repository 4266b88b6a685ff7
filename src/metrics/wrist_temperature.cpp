// Wrist temperature of the night against the 28-day baseline, in whatever unit the application stored.
//
//   "Today's temperature is 34.62°. +0.35° above baseline."

#include <string>

#include "metrics/group_metrics.h"
#include "metrics/result_keys.h"
#include "metrics/store_keys.h"
#include "platform/text/string_format.h"

namespace lunabrook {

namespace {

// Of "bankDict" itself: there is no sub-record.
constexpr std::string_view kWristTempKey = "wristTempKey";
constexpr std::string_view kWristTempToday = "wristTempTodayValue";
constexpr std::string_view kWristTempAverage = "wristTempAverage28";
constexpr std::string_view kWristTempScore = "wristTempScore";  // passed through unchanged

constexpr double kMarkedDegrees = 0.01;

struct Difference {
    std::string label;
    std::string sentence;
};

// The label shows the size of a fall, the sentence its minus sign before "below": meant.
Difference differenceTexts(const Device& device, double difference, const std::string& today) {
    const auto degrees = [&](std::string_view format, double value) {
        return localizedStringWithFormat(device.locale(), format, {value});
    };
    const std::string sentence = device.localizedString("Today's temperature is %@. %@ %@ baseline.");
    if (difference >= kMarkedDegrees) {
        return {degrees("%.2f°↗", difference),
                stringWithFormat(sentence, {today, degrees("+%.2f°", difference), device.localizedString("above")})};
    }
    if (difference <= -kMarkedDegrees) {
        return {degrees("%.2f°↘", -difference),
                stringWithFormat(sentence, {today, degrees("%.2f°", difference), device.localizedString("below")})};
    }
    return {degrees("%.2f°=", 0.0),
            stringWithFormat(device.localizedString("Today's temperature is %@. No change from baseline."), {today})};
}

}  // namespace

std::optional<Dictionary> GroupMetrics::requestWristTemp() {
    openStoreAndTools();
    const auto bank = groupPrefs_->dictionaryForKey(kBankDict);
    if (!bank || !isReportDay(*bank, stringForKey(*bank, kWristTempKey))) {
        return std::nullopt;
    }
    const float today = floatForKey(*bank, kWristTempToday, 0.0F);
    const float baseline = floatForKey(*bank, kWristTempAverage, 0.0F);
    if (!(today > 0) || !(baseline > 0)) {
        return std::nullopt;
    }
    const float difference = today - baseline;
    const std::string todayLabel = localizedStringWithFormat(device_.locale(), "%.2f°", {today});
    const Difference texts = differenceTexts(device_, difference, todayLabel);

    return dictionaryOf(
        {{kWristTempTodayLabel, todayLabel},
         {kWristTempAverage28Label, localizedStringWithFormat(device_.locale(), "%.2f°", {baseline})},
         {kWristTempDifLabel, texts.label},
         {kWristTempTodayInfo, texts.sentence},
         {kWristTempScore, floatForKey(*bank, kWristTempScore, 0.0F)},
         // The blank after the third colon is meant.
         {kPasteItem,
          localizedStringWithFormat(device_.locale(), R"({"%@":"%.2f", "%@":"%.2f", "%@": "%.2f"})",
                                    {device_.localizedString("Temperature"), today, device_.localizedString("Baseline"),
                                     baseline, device_.localizedString("Variance"), difference})}});
}

}  // namespace lunabrook
