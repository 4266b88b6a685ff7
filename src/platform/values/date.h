// Moments and spans of time.
//
// A Date is seconds since 1970-01-01 00:00:00 UTC with a fraction, so that 60.0 and 60.5 seconds after a moment
// differ; a TimeInterval is a span in seconds. Either may be NaN or infinite when it came from a store.

#pragma once

#include <chrono>

namespace lunabrook {

using TimeInterval = std::chrono::duration<double>;
using Date = std::chrono::time_point<std::chrono::system_clock, TimeInterval>;

inline constexpr double kMillisecondsPerSecond = 1000.0;
inline constexpr double kHourSeconds = 3600.0;
inline constexpr double kDaySeconds = 86400.0;

constexpr Date dateFromSecondsSince1970(double seconds) { return Date{TimeInterval{seconds}}; }
constexpr double secondsSince1970(Date date) { return date.time_since_epoch().count(); }

// Negative seconds go back.
constexpr Date dateByAddingSeconds(Date date, double seconds) { return date + TimeInterval{seconds}; }

// Whether every reader of a store understands the date: none that is not finite, and no year beyond 1 to 9999.
constexpr bool isOfFourDigitYear(Date date) {
    constexpr double kFirst = -62135596800.0;   // 0001-01-01 00:00:00 UTC
    constexpr double kBehind = 253402300800.0;  // 10000-01-01 00:00:00 UTC
    return secondsSince1970(date) >= kFirst && secondsSince1970(date) < kBehind;
}

// Positive when `later` is the later one.
constexpr double secondsFrom(Date earlier, Date later) { return (later - earlier).count(); }

}  // namespace lunabrook
