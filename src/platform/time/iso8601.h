// ISO 8601 moments: 2024-06-10T21:05:00+02:00, Z at offset zero.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/time/time_zone.h"
#include "platform/values/date.h"

namespace lunabrook {

// Whole seconds, in the zone, colon in the offset: "2024-06-10T21:05:00+02:00". Nil when the date is not finite.
std::optional<std::string> iso8601StringFromDate(Date date, const TimeZone& timeZone);

// To the nearest millisecond, in UTC: "2024-06-10T19:05:00.250Z". Nil when the date is not finite.
std::optional<std::string> iso8601MillisecondsFromDate(Date date);

// Date, time and "Z" or an offset, each field in full: "2026-06-10T08:30Z", "2026-06-10T08:30:00.25+02:00". Nil for
// anything else, days and hours that do not exist among them.
std::optional<Date> dateFromIso8601String(std::string_view text);
// The same, and without "Z" or an offset a wall time of the zone.
std::optional<Date> dateFromIso8601String(std::string_view text, const TimeZone& timeZone);

}  // namespace lunabrook
