// A time zone of the system's own zone data, and civil (wall) time in it.
//
// Model: an absolute Date has exactly one wall time in a zone; a wall time has one Date, none (the clocks jumped over
// it) or two (they went back). A missing wall time is read as if the clocks had not jumped yet (02:30 becomes 03:30), a
// doubled one is its first occurrence.

#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/values/date.h"

namespace lunabrook {

// Out-of-range fields roll over when a date is built: day 0 is the last day of the month before.
struct DateComponents {
    std::int64_t year = 1970;
    std::int64_t month = 1;
    std::int64_t day = 1;
    std::int64_t hour = 0;
    std::int64_t minute = 0;
    std::int64_t second = 0;

    friend bool operator==(const DateComponents&, const DateComponents&) = default;
};

class ZoneRules;

class TimeZone {
public:
    static constexpr const char* kZoneData = "/usr/share/zoneinfo";

    // "Europe/Berlin", "UTC", or a file's absolute path. Nil when the folder of zone data has no such zone.
    static std::optional<TimeZone> named(std::string_view identifier,
                                         const std::filesystem::path& zoneData = kZoneData);
    // What /etc/localtime says; UTC when there is none.
    static TimeZone system();
    static TimeZone utc();

    // Proleptic Gregorian; a fraction of a second is dropped toward the past. Nil for a date that is not finite or
    // more than about 140,000 years away.
    std::optional<DateComponents> componentsFromDate(Date date) const;
    // Nil when the fields, rolled over, leave that range.
    std::optional<Date> dateFromComponents(const DateComponents& components) const;

    // Seconds east of UTC, and whether the zone's data call the moment daylight saving. 0 and false out of range.
    int secondsFromUtc(Date date) const;
    bool isDaylightSavingTime(Date date) const;

    // The same data, wherever they stood.
    friend bool operator==(const TimeZone& left, const TimeZone& right);

private:
    explicit TimeZone(std::shared_ptr<const ZoneRules> rules) : rules_(std::move(rules)) {}

    std::shared_ptr<const ZoneRules> rules_;
};

}  // namespace lunabrook
