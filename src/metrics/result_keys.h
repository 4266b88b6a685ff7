// The keys of the result dictionaries that somebody outside the metrics reads: the answers, the morning at a glance,
// the watch. A key with the same meaning in two metrics has one name.

#pragma once

#include <string>
#include <string_view>

namespace lunabrook {

inline constexpr std::string_view kPasteItem = "pasteItem";  // the copyable summary of every result and answer

// The spoken sentences.
inline constexpr std::string_view kSiriLabel = "siriLabel";
inline constexpr std::string_view kTodaysReadinessStars = "todaysReadinessStars";  // sleep fuel's too
inline constexpr std::string_view kTodaysSpO2Info = "todaysSpO2Info";
inline constexpr std::string_view kTodaysRespRateInfo = "todaysRespRateInfo";
inline constexpr std::string_view kWristTempTodayInfo = "wristTempTodayInfo";
inline constexpr std::string_view kLatestBedLabel = "latestBedLabel";

// Sleep rings: fills and the rating as fractions, values as texts.
inline constexpr std::string_view kRingSleepPercent = "ringSleepPercent";
inline constexpr std::string_view kRingQualityPercent = "ringQualityPercent";
inline constexpr std::string_view kRingDeepPercent = "ringDeepPercent";
inline constexpr std::string_view kRingBpmPercent = "ringBPMPercent";
inline constexpr std::string_view kSleepRating = "sleepRating";
inline constexpr std::string_view kRingSleepLabel = "ringSleepLabel";
inline constexpr std::string_view kRingQualityLabel = "ringQualityLabel";
inline constexpr std::string_view kRingDeepLabel = "ringDeepLabel";
inline constexpr std::string_view kRingBpmLabel = "ringBPMLabel";
inline constexpr std::string_view kShowStages = "showStages";  // there when sleep stages were recorded

// Readiness and sleep fuel; "waking" is the heart rate of either. A tint is 0 not compared, 1 unfavourable, 2
// favourable.
inline constexpr std::string_view kRating = "rating";
inline constexpr std::string_view kStarsValue = "starsValue";  // 0 to 6
inline constexpr std::string_view kHrvLabel = "hrvLabel";
inline constexpr std::string_view kHrvDifLabel = "hrvDifLabel";
inline constexpr std::string_view kHrvTint = "hrvTint";
inline constexpr std::string_view kWakingLabel = "wakingLabel";
inline constexpr std::string_view kWakingDifLabel = "wakingDifLabel";
inline constexpr std::string_view kWakingTint = "wakingTint";

// Blood oxygen and respiration; a colour is 0 no marked change, 1 rise, 2 fall.
inline constexpr std::string_view kTitle = "title";
inline constexpr std::string_view kDifLabel = "difLabel";
inline constexpr std::string_view kDifColour = "difColour";
inline constexpr std::string_view kSpO2Name = "SpO2";
inline constexpr std::string_view kRespRateName = "RespRate";

// The other keys hold the metric's name: "average", kSpO2Name, "RangeLabel7" -> "averageSpO2RangeLabel7".
inline std::string nightlyKey(std::string_view before, std::string_view name, std::string_view after) {
    return std::string(before).append(name).append(after);
}

// Wrist temperature.
inline constexpr std::string_view kWristTempTodayLabel = "wristTempTodayLabel";
inline constexpr std::string_view kWristTempAverage28Label = "wristTempAverage28Label";
inline constexpr std::string_view kWristTempDifLabel = "wristTempDifLabel";

// Bedtime consistency.
inline constexpr std::string_view kAvgBedtimeDateString = "avgBedtimeDateString";
inline constexpr std::string_view kTrendString = "trendString";

// Sleep bank.
inline constexpr std::string_view kBankPercent = "bankPercent";  // a fraction, 1.0 is on target
inline constexpr std::string_view kLatestBedTime = "latestBedTime";
inline constexpr std::string_view kTimeUntilBedLabel = "timeUntilBedLabel";
inline constexpr std::string_view kWakeTimeLabel = "wakeTimeLabel";
inline constexpr std::string_view kTimeUntilWakeLabel = "timeUntilWakeLabel";

}  // namespace lunabrook
