// The keys of the result dictionaries that the answers read; what only displays read stands with its metric.

#pragma once

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

}  // namespace lunabrook
