#include "platform/time/time_zone.h"

#include <cmath>
#include <filesystem>

#include "platform/time/private/zone_rules.h"

namespace lunabrook {

namespace {

// Farther moments have no components: every formatter and calculation below stays well inside its range.
constexpr double kFarthestSeconds = 4.4e12;
// No field of a wall time needs more; beyond it carrying from one field to the next could overflow.
constexpr std::int64_t kLargestField = 1'000'000'000'000;

std::optional<absl::Time> absoluteTime(Date date) {
    const double seconds = secondsSince1970(date);
    if (!(std::abs(seconds) <= kFarthestSeconds)) {
        return std::nullopt;
    }
    return absl::FromUnixSeconds(static_cast<std::int64_t>(std::floor(seconds)));
}

bool fieldsCanBeCarried(const DateComponents& components) {
    for (const std::int64_t field :
         {components.year, components.month, components.day, components.hour, components.minute, components.second}) {
        if (field < -kLargestField || field > kLargestField) {
            return false;
        }
    }
    return true;
}

constexpr const char* kSystemZone = "/etc/localtime";

}  // namespace

std::optional<TimeZone> TimeZone::named(std::string_view identifier, const std::filesystem::path& zoneData) {
    if (identifier == "UTC") {
        return utc();  // without zone data, too
    }
    auto rules = ZoneRules::fromFile(zoneData / identifier);  // an absolute name stands for itself
    return rules ? std::optional(TimeZone(std::make_shared<const ZoneRules>(*std::move(rules)))) : std::nullopt;
}

TimeZone TimeZone::system() { return named(kSystemZone).value_or(utc()); }

TimeZone TimeZone::utc() { return TimeZone(std::make_shared<const ZoneRules>()); }

std::optional<DateComponents> TimeZone::componentsFromDate(Date date) const {
    const auto time = absoluteTime(date);
    if (!time) {
        return std::nullopt;
    }
    const absl::CivilSecond wall = rules_->at(*time).cs;
    return DateComponents{wall.year(), wall.month(), wall.day(), wall.hour(), wall.minute(), wall.second()};
}

std::optional<Date> TimeZone::dateFromComponents(const DateComponents& components) const {
    if (!fieldsCanBeCarried(components)) {
        return std::nullopt;
    }
    const absl::CivilSecond wall(components.year, components.month, components.day, components.hour, components.minute,
                                 components.second);
    // Of a wall time's answers `pre` reads a gap as if the clocks had not jumped and an overlap as its first
    // occurrence.
    const absl::Time time = rules_->at(wall).pre;
    const Date date = dateFromSecondsSince1970(static_cast<double>(absl::ToUnixSeconds(time)));
    return std::abs(secondsSince1970(date)) <= kFarthestSeconds ? std::optional(date) : std::nullopt;
}

int TimeZone::secondsFromUtc(Date date) const {
    const auto time = absoluteTime(date);
    return time ? rules_->at(*time).offset : 0;
}

bool TimeZone::isDaylightSavingTime(Date date) const {
    const auto time = absoluteTime(date);
    return time && rules_->at(*time).is_dst;
}

bool operator==(const TimeZone& left, const TimeZone& right) { return *left.rules_ == *right.rules_; }

}  // namespace lunabrook
