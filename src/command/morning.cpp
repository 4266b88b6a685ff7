#include "command/morning.h"

#include <string>

#include "metrics/group_metrics.h"
#include "metrics/result_keys.h"

namespace lunabrook {

namespace {

// The texts of a result, less the sentence and the summary, which are spoken and copied but not shown.
void addLabels(Dictionary& labels, const char* request, const std::optional<Dictionary>& result,
               std::string_view spokenKey) {
    if (!result) {
        return;
    }
    Dictionary texts;
    for (const auto& [key, value] : *result) {
        if (value.string() != nullptr && key != spokenKey && key != kPasteItem && key != kShowStages) {
            texts.emplace(key, value);
        }
    }
    labels.emplace(request, std::move(texts));
}

}  // namespace

Morning morningOf(const Device& device) {
    GroupMetrics metrics(device);
    return {
        .quality = metrics.requestQuality(),
        .readiness = metrics.requestReadiness(),
        .octane = metrics.requestOctane(),
        .spO2 = metrics.requestSpO2(),
        .respRate = metrics.requestRespRate(),
        .wristTemp = metrics.requestWristTemp(),
        .consistency = metrics.requestConsistencyDict(),
        .sleepBank = metrics.requestSleepBank(),
        .reportDay = metrics.reportDay(),
    };
}

Dictionary displayLabels(const Morning& morning) {
    Dictionary labels;
    addLabels(labels, "requestQuality", morning.quality, kSiriLabel);
    addLabels(labels, "requestReadiness", morning.readiness, kTodaysReadinessStars);
    addLabels(labels, "requestOctane", morning.octane, kTodaysReadinessStars);
    addLabels(labels, "requestSpO2", morning.spO2, kTodaysSpO2Info);
    addLabels(labels, "requestRespRate", morning.respRate, kTodaysRespRateInfo);
    addLabels(labels, "requestWristTemp", morning.wristTemp, kWristTempTodayInfo);
    addLabels(labels, "requestSleepBank", morning.sleepBank, kLatestBedLabel);
    return labels;
}

}  // namespace lunabrook
