#include "platform/time/iso8601.h"

#include <absl/time/time.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace lunabrook {

namespace {

std::string wallTimeText(const DateComponents& wall) {
    constexpr std::size_t kLongest = 64;
    char text[kLongest];
    std::snprintf(text, sizeof text, "%04lld-%02d-%02dT%02d:%02d:%02d", static_cast<long long>(wall.year),
                  static_cast<int>(wall.month), static_cast<int>(wall.day), static_cast<int>(wall.hour),
                  static_cast<int>(wall.minute), static_cast<int>(wall.second));
    return text;
}

std::string offsetText(int seconds) {
    constexpr int kMinuteSeconds = 60;
    if (seconds == 0) {
        return "Z";
    }
    const int minutes = std::abs(seconds) / kMinuteSeconds;
    constexpr std::size_t kLongest = 32;
    char text[kLongest];
    std::snprintf(text, sizeof text, "%c%02d:%02d", seconds < 0 ? '-' : '+', minutes / 60, minutes % 60);
    return text;
}

}  // namespace

std::optional<std::string> iso8601StringFromDate(Date date, const TimeZone& timeZone) {
    const auto wall = timeZone.componentsFromDate(date);
    if (!wall) {
        return std::nullopt;
    }
    return wallTimeText(*wall) + offsetText(timeZone.secondsFromUtc(date));
}

std::optional<std::string> iso8601MillisecondsFromDate(Date date) {
    constexpr double kMillisecondsPerSecond = 1000.0;
    const double milliseconds = std::nearbyint(secondsSince1970(date) * kMillisecondsPerSecond);
    const double seconds = std::floor(milliseconds / kMillisecondsPerSecond);
    const auto wall = TimeZone::utc().componentsFromDate(dateFromSecondsSince1970(seconds));
    if (!wall) {
        return std::nullopt;
    }
    constexpr std::size_t kLongest = 16;
    char fraction[kLongest];
    std::snprintf(fraction, sizeof fraction, ".%03dZ",
                  static_cast<int>(milliseconds - seconds * kMillisecondsPerSecond));
    return wallTimeText(*wall) + fraction;
}

std::optional<Date> dateFromIso8601String(std::string_view text) {
    absl::Time time;
    std::string error;
    // The parser also reads words for the infinite past and future; those are no moments.
    if (!absl::ParseTime(absl::RFC3339_full, std::string(text), &time, &error) || time == absl::InfiniteFuture() ||
        time == absl::InfinitePast()) {
        return std::nullopt;
    }
    return dateFromSecondsSince1970(absl::ToDoubleSeconds(time - absl::UnixEpoch()));
}

}  // namespace lunabrook
