// The rules of a time zone, made from the bytes of its file (TZif).
//
// Such a file lists its transitions up to 2037 and ends with the rule for the years after. The library writes that rule
// out for four centuries when it loads a zone, which takes longer than everything else in a request; so the rule is
// left out at first, and moments that it decides ask a second zone, loaded when the first of them comes.

#pragma once

#include <absl/time/civil_time.h>
#include <absl/time/time.h>

#include <filesystem>
#include <optional>
#include <string>

namespace lunabrook {

class ZoneRules {
public:
    ZoneRules() : zone_(absl::UTCTimeZone()) {}

    // Nil when the file is no regular one, cannot be read or holds no zone. Equal bytes are loaded once a process.
    static std::optional<ZoneRules> fromFile(const std::filesystem::path& file);

    absl::TimeZone::CivilInfo at(absl::Time time) const { return zone(time < listedUntil_).At(time); }
    absl::TimeZone::TimeInfo at(absl::CivilSecond wall) const { return zone(wall < listedUntilWall_).At(wall); }

    friend bool operator==(const ZoneRules& left, const ZoneRules& right) { return left.data_ == right.data_; }

private:
    absl::TimeZone zone(bool isListed) const;

    std::string data_;  // empty for UTC itself
    absl::TimeZone zone_;
    absl::Time listedUntil_ = absl::InfiniteFuture();
    absl::CivilSecond listedUntilWall_ = absl::CivilSecond::max();
};

}  // namespace lunabrook
