// Readiness: the morning's HRV and waking heart rate, from the application's record or from the watch.
//
//   "Today's Readiness is great."  or, with stars:  "Today's Readiness is 4.25 stars."

#include "metrics/group_metrics.h"
#include "metrics/recovery_score.h"
#include "metrics/store_keys.h"

namespace lunabrook {

namespace {

constexpr std::string_view kReadyDict = "readyDict";
constexpr std::string_view kReadyStars = "readyStars";
constexpr std::string_view kRawHrv = "rawHRVVal";
constexpr std::string_view kRawWakingRate = "rawWakingVal";

constexpr RecoveryMetric kReadinessInWords = {
    .heading = "Today's Readiness",
    .hrvBaselineName = "Baseline HRV",
    .rateBaselineName = "Baseline Waking BPM",
    .gradeLabels = {"Superb", "Optimal", "Great", "Good", "OK", "Low", "Rest"},
};
constexpr RecoveryMetric kReadinessInStars = {
    .heading = kReadinessInWords.heading,
    .hrvBaselineName = kReadinessInWords.hrvBaselineName,
    .rateBaselineName = kReadinessInWords.rateBaselineName,
    .gradeLabels = {"🥇", "★★★★★", "★★★★⭒", "★★★⭒⭒", "★★⭒⭒⭒", "★⭒⭒⭒⭒",
                    "\U0001F486\u200D\u2642\uFE0F"},  // a man at massage
    .speaksStars = true,
};

// The watch's values of today; where there is no baseline they are their own, which reads as unchanged.
RecoverySignals withWatchValues(RecoverySignals signals, float watchHrv, float watchRate) {
    signals.hrv = watchHrv;
    signals.rate = watchRate;
    if (signals.hrvBaseline == 0) {
        signals.hrvBaseline = watchHrv;
    }
    if (signals.rateBaseline == 0) {
        signals.rateBaseline = watchRate;
    }
    return signals;
}

}  // namespace

std::optional<Dictionary> GroupMetrics::requestReadiness() {
    openStoreAndTools();
    const auto bank = groupPrefs_->dictionaryForKey(kBankDict);
    const Dictionary* record = bank ? dictionaryForKey(*bank, kReadyDict) : nullptr;
    if (record == nullptr) {
        return std::nullopt;
    }
    const auto watch = validWatchRecord();
    const float watchHrv = watch ? floatForKey(*watch, kRawHrv, 0.0F) : 0.0F;
    const float watchRate = watch ? floatForKey(*watch, kRawWakingRate, 0.0F) : 0.0F;
    const bool hasWatch = watchRate > 0 || watchHrv > 0;
    const bool isOfReportDay = isReportDay(*bank, stringForKey(*record, kRecordKey));
    if (!hasWatch && !isOfReportDay) {
        return std::nullopt;
    }
    RecoverySignals signals = recoverySignals(*record);
    // The application's record of today wins over the watch, when it holds anything.
    const bool recordHasToday = isOfReportDay && (signals.hrv != 0 || signals.rate != 0);
    if (hasWatch && !recordHasToday) {
        signals = withWatchValues(signals, watchHrv, watchRate);
    }
    return recoveryResult(device_, signals,
                          groupPrefs_->boolForKey(kReadyStars) ? kReadinessInStars : kReadinessInWords);
}

}  // namespace lunabrook
