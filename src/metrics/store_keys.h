// The shared store: its name and the keys that more than one reader knows.

#pragma once

#include <string_view>

namespace lunabrook {

inline constexpr std::string_view kGroupSuite = "group.kestrovan.Lunabrook";

inline constexpr std::string_view kWatchTrackDict = "watchTrackDict";
inline constexpr std::string_view kRawSynchTime = "rawSynchTime";
inline constexpr std::string_view kRawSleepTime = "rawSleepTime";
inline constexpr std::string_view kRawSleepBankTime = "rawSleepBankTime";

inline constexpr std::string_view kLunabrookConfig = "lunabrookConfig";
inline constexpr std::string_view kNightHour = "nightHour";
inline constexpr std::string_view kRequiredHours = "requiredHours";

inline constexpr std::string_view kBankDict = "bankDict";
inline constexpr std::string_view kRecordKey = "key";  // the day that a sub-record of "bankDict" belongs to
inline constexpr std::string_view kActiveLightSwitch =
    "activeLightSwitch";  // date of the last lights off; only written

}  // namespace lunabrook
