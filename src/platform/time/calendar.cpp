#include "platform/time/calendar.h"

#include <absl/time/civil_time.h>

namespace lunabrook {

std::optional<DateComponents> Calendar::componentsFromDate(std::optional<Date> date) const {
    return date ? timeZone_.componentsFromDate(*date) : std::nullopt;
}

std::optional<Date> Calendar::dateFromComponents(const DateComponents& components) const {
    return timeZone_.dateFromComponents(components);
}

std::optional<int> Calendar::weekdayFromDate(std::optional<Date> date) const {
    const auto components = componentsFromDate(date);
    if (!components) {
        return std::nullopt;
    }
    const absl::CivilDay day(components->year, components->month, components->day);
    constexpr int kDaysOfWeek = 7;
    // Abseil counts from Monday, 0.
    return (static_cast<int>(absl::GetWeekday(day)) + 1) % kDaysOfWeek + 1;
}

}  // namespace lunabrook
