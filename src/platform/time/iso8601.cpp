#include "platform/time/iso8601.h"

#include <absl/time/time.h>

#include <algorithm>
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

// The length of `shape` when the text starts with it, 0 standing for any digit; else 0.
std::size_t skipShape(std::string_view text, std::string_view shape) {
    const bool fits = text.size() >= shape.size() &&
                      std::equal(shape.begin(), shape.end(), text.begin(), [](char wanted, char given) {
                          return wanted == '0' ? given >= '0' && given <= '9' : given == wanted;
                      });
    return fits ? shape.size() : 0;
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
    constexpr std::string_view kMinutes = "0000-00-00T00:00";
    if (skipShape(text, kMinutes) == 0) {
        return std::nullopt;
    }
    const std::size_t seconds = skipShape(text.substr(kMinutes.size()), ":00");
    const std::string_view clock = text.substr(0, kMinutes.size() + seconds);
    std::string_view rest = text.substr(clock.size());
    std::string_view fraction;
    if (seconds > 0 && rest.starts_with('.')) {
        fraction = rest.substr(0, rest.find_first_not_of("0123456789", 1));
        rest.remove_prefix(fraction.size());
    }
    const bool isZone = rest == "Z" || ((rest.starts_with('+') || rest.starts_with('-')) &&
                                        skipShape(rest.substr(1), "00:00") + 1 == rest.size());
    if (!isZone || fraction.size() == 1) {
        return std::nullopt;
    }
    absl::Time time;
    std::string error;
    const std::string whole = std::string(clock) + (seconds == 0 ? ":00" : "") + std::string(fraction);
    if (!absl::ParseTime(absl::RFC3339_full, whole + std::string(rest), &time, &error)) {
        return std::nullopt;
    }
    return dateFromSecondsSince1970(absl::ToDoubleSeconds(time - absl::UnixEpoch()));
}

std::optional<Date> dateFromIso8601String(std::string_view text, const TimeZone& timeZone) {
    if (const auto date = dateFromIso8601String(text)) {
        return date;
    }
    const auto asInUtc = dateFromIso8601String(std::string(text) + "Z");
    const auto wall = asInUtc ? TimeZone::utc().componentsFromDate(*asInUtc) : std::nullopt;
    const auto date = wall ? timeZone.dateFromComponents(*wall) : std::nullopt;
    if (!date) {
        return std::nullopt;
    }
    const double seconds = secondsSince1970(*asInUtc);
    return dateByAddingSeconds(*date, seconds - std::floor(seconds));
}

}  // namespace lunabrook
