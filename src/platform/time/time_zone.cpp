#include "platform/time/time_zone.h"

#include <absl/time/civil_time.h>
#include <absl/time/time.h>

#include <cmath>
#include <map>
#include <mutex>

#include "platform/files/private/file_identity.h"

namespace lunabrook {

struct TimeZone::Rules {
    absl::TimeZone zone;
};

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

constexpr const char* kZoneData = "/usr/share/zoneinfo";
constexpr const char* kSystemZone = "/etc/localtime";

// Abseil keeps what it loaded by name as long as the process lives. A file that changed since is loaded under a
// spelling of its path that was not used before: "/etc/localtime", then "/./etc/localtime", then "/././etc/localtime".
std::string unusedSpelling(std::string name) {
    struct Known {
        std::optional<FileIdentity> identity;
        int changes = 0;
    };
    static std::mutex mutex;
    static std::map<std::string, Known> knownFiles;
    const auto identity = identityOf(std::filesystem::path(kZoneData) / name);  // an absolute name stands for itself
    const std::lock_guard lock(mutex);
    Known& known = knownFiles.try_emplace(name, Known{identity}).first->second;
    if (known.identity != identity) {
        known = {identity, known.changes + 1};
    }
    const std::size_t start = name.starts_with('/') ? 1 : 0;
    for (int change = 0; change < known.changes; ++change) {
        name.insert(start, "./");
    }
    return name;
}

}  // namespace

std::optional<TimeZone> TimeZone::named(std::string_view identifier) {
    Rules rules;
    // The loader takes an empty name for UTC; here it names nothing.
    if (identifier.empty() || !absl::LoadTimeZone(unusedSpelling(std::string(identifier)), &rules.zone)) {
        return std::nullopt;
    }
    return TimeZone(std::make_shared<const Rules>(rules));
}

TimeZone TimeZone::system() {
    Rules rules;
    if (!absl::LoadTimeZone(unusedSpelling(kSystemZone), &rules.zone)) {
        rules.zone = absl::UTCTimeZone();
    }
    return TimeZone(std::make_shared<const Rules>(rules));
}

TimeZone TimeZone::utc() { return TimeZone(std::make_shared<const Rules>(Rules{absl::UTCTimeZone()})); }

std::optional<DateComponents> TimeZone::componentsFromDate(Date date) const {
    const auto time = absoluteTime(date);
    if (!time) {
        return std::nullopt;
    }
    const absl::CivilSecond wall = rules_->zone.At(*time).cs;
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
    const absl::Time time = rules_->zone.At(wall).pre;
    const Date date = dateFromSecondsSince1970(static_cast<double>(absl::ToUnixSeconds(time)));
    return std::abs(secondsSince1970(date)) <= kFarthestSeconds ? std::optional(date) : std::nullopt;
}

int TimeZone::secondsFromUtc(Date date) const {
    const auto time = absoluteTime(date);
    return time ? rules_->zone.At(*time).offset : 0;
}

bool TimeZone::isDaylightSavingTime(Date date) const {
    const auto time = absoluteTime(date);
    return time && rules_->zone.At(*time).is_dst;
}

bool operator==(const TimeZone& left, const TimeZone& right) { return left.rules_->zone == right.rules_->zone; }

}  // namespace lunabrook
