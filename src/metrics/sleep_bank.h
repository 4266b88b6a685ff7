// What a fresh and a cached sleep bank share: the keys of their result and the part that depends on the moment.

#pragma once

#include <string_view>

#include "metrics/result_keys.h"
#include "platform/device/device.h"
#include "platform/values/value.h"
#include "timekit/format_tools.h"

namespace lunabrook {

// The last full result and the date at which it was stored.
inline constexpr std::string_view kCachedSleepBank = "cachedSleepBank";
inline constexpr std::string_view kCachedSleepBankUpdate = "cachedSleepBankUpdate";

inline constexpr std::string_view kBankBalance = "bankBalance";
inline constexpr std::string_view kBankForecast = "bankForecast";
inline constexpr std::string_view kBedTime = "bedTime";
inline constexpr std::string_view kAdjustedBedTime = "adjustedBedTime";
inline constexpr std::string_view kTimeUntilBed = "timeUntilBed";
inline constexpr std::string_view kWakeTime = "wakeTime";

// From the result's "bedTime" and "wakeTime", moved on by `offsetSeconds`, sets "adjustedBedTime", "timeUntilBed", both
// time-left labels and the copyable summary. Without a bedtime or wake time its time left is 0.
void setTimeLeft(Dictionary& result, const Device& device, FormatTools& formatTools, double offsetSeconds, Date now);

}  // namespace lunabrook
