// The Gregorian calendar in one time zone.

#pragma once

#include <optional>

#include "platform/time/time_zone.h"
#include "platform/values/date.h"

namespace lunabrook {

class Calendar {
public:
    explicit Calendar(TimeZone timeZone) : timeZone_(std::move(timeZone)) {}

    // As TimeZone's; a missing date has no components.
    std::optional<DateComponents> componentsFromDate(std::optional<Date> date) const;
    std::optional<Date> dateFromComponents(const DateComponents& components) const;

    // 1 is Sunday, 7 is Saturday.
    std::optional<int> weekdayFromDate(std::optional<Date> date) const;

private:
    TimeZone timeZone_;
};

}  // namespace lunabrook
