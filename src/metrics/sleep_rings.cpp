// Sleep rings: how far sleep, quality (or REM), deep sleep and heart rate filled their rings, and the sleep rating.
//
//   "2 sleep rings closed. Today's sleep rating is 88%."

#include <array>
#include <cstddef>
#include <string>

#include "metrics/group_metrics.h"
#include "metrics/percent.h"
#include "metrics/sleep_goal.h"
#include "metrics/store_keys.h"
#include "platform/text/string_format.h"
#include "platform/text/text_case.h"

namespace lunabrook {

namespace {

// The watch's record; the first two are three numbers joined by "|": quality, deep, heart rate.
constexpr std::string_view kRawRingRating = "rawRingRating";  // fills, 1.0 is closed
constexpr std::string_view kRawRingValues = "rawRingValues";  // seconds, seconds, beats per minute

// Stands beside the mirrored labels while there are any.
constexpr std::string_view kSwiftHasData = "Swift-HasData";

constexpr int kRingCount = 4;

struct Rings {
    float sleepFill = 0, qualityFill = 0, deepFill = 0, bpmFill = 0;
    float sleepSeconds = 0, qualitySeconds = 0, deepSeconds = 0, bpm = 0;

    std::array<float, kRingCount> fills() const { return {sleepFill, qualityFill, deepFill, bpmFill}; }
};

// All zero unless there are three components; text that is no number reads as 0.
std::array<float, 3> numbersOfJoinedText(const std::string* text) {
    std::array<float, 3> numbers{};
    const std::size_t first = text != nullptr ? text->find('|') : std::string::npos;
    const std::size_t second = first != std::string::npos ? text->find('|', first + 1) : std::string::npos;
    if (second != std::string::npos) {
        const std::size_t third = text->find('|', second + 1);
        numbers[0] = Value(text->substr(0, first)).floatValue();
        numbers[1] = Value(text->substr(first + 1, second - first - 1)).floatValue();
        numbers[2] = Value(text->substr(second + 1, third - second - 1)).floatValue();
    }
    return numbers;
}

Rings ringsOfWatchRecord(const Dictionary& watch, float requiredHours) {
    Rings rings;
    const auto fills = numbersOfJoinedText(stringForKey(watch, kRawRingRating));
    const auto values = numbersOfJoinedText(stringForKey(watch, kRawRingValues));
    rings.qualityFill = fills[0];
    rings.deepFill = fills[1];
    rings.bpmFill = fills[2];
    rings.qualitySeconds = values[0];
    rings.deepSeconds = values[1];
    rings.bpm = values[2];
    if (const Value* sleepTime = valueForKey(watch, kRawSleepTime)) {
        rings.sleepSeconds = sleepTime->floatValue();
        rings.sleepFill = rings.sleepSeconds / sleepGoalSeconds(requiredHours);
    }
    return rings;
}

int closedCount(const Rings& rings) {
    int count = 0;
    for (const float fill : rings.fills()) {
        count += fill >= 1.0F ? 1 : 0;
    }
    return count;
}

// The mean of the fills, each capped at 1; no lower bound.
float sleepRating(const Rings& rings) {
    float sum = 0;
    for (const float fill : rings.fills()) {
        sum += fill >= 1.0F ? 1.0F : fill;
    }
    return sum * 0.25F;
}

std::string headline(const Device& device, int closed) {
    switch (closed) {
        case 0:
            return device.localizedString("No Sleep Rings Closed");
        case 1:
            return device.localizedString("1 Sleep Ring Closed");
        case kRingCount:
            return device.localizedString("All Sleep Rings Closed!");
        default:
            return stringWithFormat("%d %@", {closed, device.localizedString("Sleep Rings Closed")});
    }
}

std::string sentence(const Device& device, const std::string& headline, int closed, float rating) {
    const char* mark = closed == kRingCount ? "" : ".";  // that headline brings its own
    const std::string ratingName = device.localizedString("Sleep Rating");
    if (ratingName == "Sleep Rating") {
        return stringWithFormat("%@%@ Today's sleep rating is %.0f%%.", {headline, mark, percentOf(rating)});
    }
    return stringWithFormat("%@%@ %@: %.0f%%.", {headline, mark, ratingName, percentOf(rating)});
}

std::string summary(const Device& device, const Rings& rings, bool hasStages, float rating) {
    const std::string sleep = device.localizedString("Sleep");
    const std::string quality = device.localizedString(hasStages ? "REM" : "Quality");
    const std::string deep = device.localizedString("Deep");
    const std::string bpm = device.localizedString("bpm");
    const std::string ratingName = stringByReplacing(device.localizedString("Sleep Rating"), " ", "");
    // The blanks after two of the colons are meant.
    return localizedStringWithFormat(
        device.locale(),
        R"({"%@%%":"%.0f", "%@%%":"%.0f", "%@%%": "%.0f", "%@%%":"%.0f", "%@":"%.2f", "%@":"%.2f", "%@": "%.2f", )"
        R"("%@":"%.0f", "%@":"%.0f"})",
        {sleep, percentOf(rings.sleepFill), quality, percentOf(rings.qualityFill), deep, percentOf(rings.deepFill), bpm,
         percentOf(rings.bpmFill), sleep, rings.sleepSeconds / 3600.0, quality, rings.qualitySeconds / 3600.0, deep,
         rings.deepSeconds / 3600.0, bpm, rings.bpm, ratingName, percentOf(rating)});
}

std::string swiftKey(std::string_view key) { return "Swift-" + std::string(key); }

}  // namespace

std::optional<Dictionary> GroupMetrics::requestQuality() {
    openStoreAndTools();
    const auto watch = validWatchRecord();
    if (!watch) {
        return std::nullopt;
    }
    const Rings rings = ringsOfWatchRecord(*watch, getLunabrookConfigValueForKey(kRequiredHours));
    const bool hasStages = valueForKey(*watch, kShowStages) != nullptr;
    const int closed = closedCount(rings);
    const float rating = sleepRating(rings);
    const std::string spokenHeadline = formatTools_->sentenceCapitalizedString(headline(device_, closed));

    Dictionary result = dictionaryOf({{kRingSleepPercent, rings.sleepFill},
                                      {kRingQualityPercent, rings.qualityFill},
                                      {kRingDeepPercent, rings.deepFill},
                                      {kRingBpmPercent, rings.bpmFill},
                                      {kSleepRating, rating},
                                      {kRingBpmLabel, stringWithFormat("%.0f", {rings.bpm})},
                                      {kSiriLabel, sentence(device_, spokenHeadline, closed, rating)},
                                      {kPasteItem, summary(device_, rings, hasStages, rating)}});
    setValue(result, kRingSleepLabel, formatTools_->formattedTimeInterval(rings.sleepSeconds));
    setValue(result, kRingQualityLabel, formatTools_->formattedTimeInterval(rings.qualitySeconds));
    setValue(result, kRingDeepLabel, formatTools_->formattedTimeInterval(rings.deepSeconds));
    if (hasStages) {
        result.emplace(kShowStages, "1");
    }
    return result;
}

void GroupMetrics::requestQualityForSwift() {
    constexpr std::array kMirroredLabels = {kRingSleepLabel, kRingQualityLabel, kRingDeepLabel, kRingBpmLabel};
    const auto result = requestQuality();

    UserDefaults::Changes changes{{std::string(kSwiftHasData), std::nullopt}};
    for (const std::string_view label : kMirroredLabels) {
        const Value* value = result ? valueForKey(*result, label) : nullptr;
        changes[swiftKey(label)] = !result ? std::optional<Value>("--") : value ? std::optional(*value) : std::nullopt;
    }
    if (result) {
        const std::string* label = stringForKey(*result, kRingQualityLabel);
        changes[std::string(kSwiftHasData)] = "1";
        changes[swiftKey(kRingQualityLabel)] =
            stringWithFormat(result->contains(kShowStages) ? "\u24C7 %@" : "\u2605 %@",
                             {label != nullptr ? std::optional(*label) : std::nullopt});
    }
    UserDefaults(device_, kGroupSuite).setObjects(changes);
}

}  // namespace lunabrook
