#include "metrics/recovery_score.h"

#include <cstddef>
#include <string>

#include "metrics/result_keys.h"
#include "platform/text/string_format.h"
#include "platform/text/text_case.h"

namespace lunabrook {

namespace {

constexpr std::string_view kHrvToday = "hrvTodayVal";
constexpr std::string_view kHrvAverage = "hrvAverage";
constexpr std::string_view kRateToday = "bpmTodayVal";
constexpr std::string_view kRateAverage = "bpmAverage";

constexpr std::string_view kPercentage = "percentage";  // the combined score
constexpr std::string_view kWakingPoints = "wakingPoints";
constexpr std::string_view kHrvPoints = "hrvPoints";

constexpr float kLeastDifference = 0.5F;  // up to here it reads "No change"

struct Band {
    double above;  // strictly
    double width;  // of one star
    float stars;   // at the lower bound
};
// From the top, in the order of the grade labels. Above 1.5 there is nothing to run to: six stars flat. The odd widths
// are 1.5 - 1.2 and 0.7 - 0.5 in double precision, so that a band ends on the next whole star.
constexpr double kTopScore = 1.5;
constexpr std::array<Band, 5> kBands = {{
    {1.2, 0.30000000000000004, 5},
    {0.95, 0.25, 4},
    {0.825, 0.125, 3},
    {0.7, 0.125, 2},
    {0.5, 0.19999999999999996, 1},
}};
constexpr Band kLowestBand = {0.0, 0.5, 0};

struct Grade {
    std::size_t index;  // 0 is the best
    float stars;        // 0 to 6
};

Grade gradeOf(float score) {
    if (score > kTopScore) {
        return {0, 6.0F};
    }
    std::size_t index = 1;
    Band band = kLowestBand;
    for (const Band& candidate : kBands) {
        if (score > candidate.above) {
            band = candidate;
            break;
        }
        ++index;
    }
    return {index, narrowed((score - band.above) / band.width) + band.stars};
}

enum class Tint { notCompared = 0, unfavourable = 1, favourable = 2 };

// One signal against its baseline.
struct Comparison {
    float points = 0;
    Tint tint = Tint::notCompared;
    std::string label = "--";
    std::string differenceLabel;
};

std::string differenceLabel(const Device& device, float today, float baseline, bool isAbove) {
    const float difference = isAbove ? today - baseline : baseline - today;
    if (difference > kLeastDifference) {
        return stringWithFormat("%.0f %@",
                                {difference, device.localizedString(isAbove ? "above baseline" : "below baseline")});
    }
    return device.localizedString("No change");
}

Comparison comparedHrv(const Device& device, const RecoverySignals& signals) {
    Comparison compared;
    if (signals.hrv > 0 && signals.hrvBaseline > 0) {
        const float ratio = signals.hrv / signals.hrvBaseline;
        const bool isAbove = ratio >= 1.0F;
        // The step down from 0.75 to 0.7 at the baseline is meant.
        compared.points = isAbove ? narrowed((double{ratio} - 1.0) - 0.1 + 0.8) : (ratio - 1.0F) + 0.75F;
        compared.tint = isAbove ? Tint::favourable : Tint::unfavourable;
        compared.label = stringWithFormat("%.0f ms", {signals.hrv});
        compared.differenceLabel = differenceLabel(device, signals.hrv, signals.hrvBaseline, isAbove);
    }
    return compared;
}

Comparison comparedRate(const Device& device, const RecoverySignals& signals) {
    Comparison compared;
    if (signals.rate > 0 && signals.rateBaseline > 0) {
        const float ratio = signals.rate / signals.rateBaseline;
        const bool isAbove = ratio >= 1.0F;
        const float percent = (isAbove ? ratio - 1.0F : 1.0F - ratio) * 100.0F;
        const float fraction = percent > 10.0F ? 1.0F : percent / 10.0F;
        // The jump from 0.8 to 0.95 at the baseline is meant.
        compared.points = isAbove ? 0.95F - 0.5F * fraction : 0.8F + 0.8F * fraction;
        compared.tint = isAbove ? Tint::unfavourable : Tint::favourable;
        compared.label = stringWithFormat("%.0f %@", {signals.rate, device.localizedString("bpm")});
        compared.differenceLabel = differenceLabel(device, signals.rate, signals.rateBaseline, isAbove);
    }
    return compared;
}

std::optional<float> combinedScore(float hrvPoints, float ratePoints) {
    if (hrvPoints > 0 && ratePoints > 0) {
        return (hrvPoints + ratePoints) / 2.0F;
    }
    return hrvPoints > 0 ? std::optional(hrvPoints) : ratePoints > 0 ? std::optional(ratePoints) : std::nullopt;
}

std::string sentence(const Device& device, const RecoveryMetric& metric, const Grade& grade, const std::string& label) {
    const std::string heading = capitalizedString(device.localizedString(metric.heading));
    const std::string starsName = device.localizedString("stars");
    const char* joiner = starsName == "stars" ? " is" : ":";  // only the English sentence has a verb
    if (metric.speaksStars) {
        const std::string stars = localizedStringWithFormat(device.locale(), "%.2f", {grade.stars});
        return stringWithFormat("%@%@ %@ %@.", {heading, joiner, stars, starsName});
    }
    return stringWithFormat("%@%@ %@.", {heading, joiner, lowercaseString(label)});
}

std::string summary(const Device& device, const RecoveryMetric& metric, const RecoverySignals& signals, float stars,
                    const std::string& label) {
    const auto nameWithoutBlanks = [&](std::string_view fragment) {
        return stringByReplacing(device.localizedString(fragment), " ", "");
    };
    // The blank after the third colon is meant.
    return localizedStringWithFormat(
        device.locale(), R"({"%@":"%.2f", "%@":"%.0f", "%@": "%.0f", "%@":"%.0f", "%@":"%.0f", "%@":"%@"})",
        {capitalizedString(device.localizedString("stars")), stars, device.localizedString("HRV"), signals.hrv,
         device.localizedString("bpm"), signals.rate, nameWithoutBlanks(metric.hrvBaselineName), signals.hrvBaseline,
         nameWithoutBlanks(metric.rateBaselineName), signals.rateBaseline,
         capitalizedString(device.localizedString("Rating")), label});
}

}  // namespace

RecoverySignals recoverySignals(const Dictionary& record) {
    return {.hrv = floatForKey(record, kHrvToday, 0.0F),
            .hrvBaseline = floatForKey(record, kHrvAverage, 0.0F),
            .rate = floatForKey(record, kRateToday, 0.0F),
            .rateBaseline = floatForKey(record, kRateAverage, 0.0F)};
}

std::optional<Dictionary> recoveryResult(const Device& device, const RecoverySignals& signals,
                                         const RecoveryMetric& metric) {
    const Comparison hrv = comparedHrv(device, signals);
    const Comparison rate = comparedRate(device, signals);
    const auto score = combinedScore(hrv.points, rate.points);
    if (!score) {
        return std::nullopt;
    }
    const Grade grade = gradeOf(*score);
    const std::string label = device.localizedString(metric.gradeLabels[grade.index]);
    return dictionaryOf({{kRating, label},
                         {kTodaysReadinessStars, sentence(device, metric, grade, label)},
                         {kStarsValue, grade.stars},
                         {kPercentage, *score},
                         {kHrvLabel, hrv.label},
                         {kHrvDifLabel, hrv.differenceLabel},
                         {kWakingLabel, rate.label},
                         {kWakingDifLabel, rate.differenceLabel},
                         {kWakingPoints, rate.points},
                         {kHrvPoints, hrv.points},
                         {kWakingTint, static_cast<int>(rate.tint)},
                         {kHrvTint, static_cast<int>(hrv.tint)},
                         {kPasteItem, summary(device, metric, signals, grade.stars, label)}});
}

}  // namespace lunabrook
