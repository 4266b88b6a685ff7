// Durations as text in one locale: 27000 s -> "7h 30m", "7 hours, 30 minutes".
//
// Cuts off what is below the smallest allowed unit; never wraps the largest (100 hours stay "100h 0m").

#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/text/locale.h"

namespace lunabrook {

enum class UnitsStyle {
    positional,   // 7:05
    abbreviated,  // 7h 5m
    shortened,    // 7 hr, 5 min
    full,         // 7 hours, 5 minutes
};

enum class ZeroFormatting {
    standard,  // units that are zero are left out (positional: only leading ones); all zero shows the smallest, "0m"
    pad,       // every allowed unit is shown; positional fills up to two digits
};

// Units are combined by addition: hour + minute is 96.
namespace calendar_unit {
inline constexpr unsigned kDay = 16;
inline constexpr unsigned kHour = 32;
inline constexpr unsigned kMinute = 64;
inline constexpr unsigned kSecond = 128;
inline constexpr unsigned kWeekOfMonth = 4096;
}  // namespace calendar_unit

class DateComponentsFormatter {
public:
    explicit DateComponentsFormatter(Locale locale);  // cheap; the first text loads the locale's data

    UnitsStyle unitsStyle = UnitsStyle::positional;
    unsigned allowedUnits = calendar_unit::kHour + calendar_unit::kMinute;
    ZeroFormatting zeroFormattingBehavior = ZeroFormatting::standard;
    int maximumUnitCount = 0;  // largest first; 0 is no limit

    // `interval` in seconds. Negative: one minus sign, on the first unit shown, even when that unit is zero.
    // Nil when not finite or when no unit is allowed.
    std::optional<std::string> stringFromTimeInterval(double interval) const;

private:
    Locale locale_;
};

}  // namespace lunabrook
