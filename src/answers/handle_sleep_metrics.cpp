#include "answers/handle_sleep_metrics.h"

#include <string>

#include "metrics/store_keys.h"
#include "platform/text/string_format.h"
#include "platform/text/text_case.h"

namespace lunabrook {

std::optional<Dictionary> HandleSleepMetrics::getSleepRingsInfo() {
    return metricAnswer(&GroupMetrics::requestQuality, kSiriLabel);
}

std::optional<Dictionary> HandleSleepMetrics::getLatestBedtimeInfo() {
    return metricAnswer(&GroupMetrics::requestSleepBank, kLatestBedLabel);
}

std::optional<Dictionary> HandleSleepMetrics::getReadinessInfo() {
    return metricAnswer(&GroupMetrics::requestReadiness, kTodaysReadinessStars);
}

std::optional<Dictionary> HandleSleepMetrics::getOctaneInfo() {
    return metricAnswer(&GroupMetrics::requestOctane, kTodaysReadinessStars);
}

std::optional<Dictionary> HandleSleepMetrics::getSpO2Info() {
    return metricAnswer(&GroupMetrics::requestSpO2, kTodaysSpO2Info);
}

std::optional<Dictionary> HandleSleepMetrics::getWristTempInfo() {
    return metricAnswer(&GroupMetrics::requestWristTemp, kWristTempTodayInfo);
}

std::optional<Dictionary> HandleSleepMetrics::getRespirationInfo() {
    return metricAnswer(&GroupMetrics::requestRespRate, kTodaysRespRateInfo);
}

Dictionary HandleSleepMetrics::metricAnswer(Request request, std::string_view spokenKey) {
    if (!groupMetrics_) {
        groupMetrics_ = std::make_unique<GroupMetrics>(device_);
    }
    const auto result = (*groupMetrics_.*request)();
    const Value* sentence = result ? valueForKey(*result, spokenKey) : nullptr;
    if (sentence == nullptr) {
        return noDataAnswer();
    }
    Dictionary answer;
    if (const Value* summary = valueForKey(*result, kPasteItem)) {
        answer.emplace(kPasteItem, *summary);
    }
    answer.emplace(kResponse, *sentence);
    return answer;
}

Dictionary HandleSleepMetrics::noDataAnswer() const {
    Dictionary answer;
    answer.emplace(kResponse, device_.localizedString("No Data"));
    return answer;
}

void HandleSleepMetrics::openStore() {
    if (!groupPrefs_) {
        groupPrefs_ = std::make_unique<UserDefaults>(device_, kGroupSuite);
    }
}

void HandleSleepMetrics::openStoreAndTools() {
    openStore();
    if (!formatTools_) {
        formatTools_ = std::make_unique<FormatTools>(device_);
    }
}

bool HandleSleepMetrics::shouldPasteForID(std::int32_t identifier) {
    openStore();
    const auto isOff = groupPrefs_->objectForKey(stringWithFormat("PasteSwitchOff%d", {identifier}));
    return !isOff || !isOff->boolValue();
}

std::optional<Dictionary> HandleSleepMetrics::getSleepMetricForKey(std::string_view key, std::int64_t format,
                                                                   std::int64_t type) {
    openStoreAndTools();
    const auto watch = groupPrefs_->dictionaryForKey(kWatchTrackDict);
    if (!watch || type != 0 || format != 0) {
        return noDataAnswer();
    }
    const auto duration = formatTools_->formattedLongTimeInterval(floatForKey(*watch, key, 0.0F));
    const std::string sentence = stringWithFormat("%@ %@", {device_.localizedString(kTodayYouSlept), duration});
    Dictionary answer;
    answer.emplace(kResponse, stringByReplacing(sentence, "  ", " "));
    return answer;
}

float HandleSleepMetrics::getLunabrookConfigValueForKey(std::string_view key) const {
    const auto config = groupPrefs_ ? groupPrefs_->dictionaryForKey(kLunabrookConfig) : nullptr;
    return config ? floatForKey(*config, key, 0.0F) : 0.0F;
}

}  // namespace lunabrook
