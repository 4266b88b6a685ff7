#include "platform/time/private/zone_rules.h"

#include <absl/time/internal/cctz/include/cctz/zone_info_source.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>

namespace cctz = absl::time_internal::cctz;

namespace lunabrook {

namespace {

constexpr const char* kMagic = "TZif";
constexpr std::uintmax_t kMaximumBytes = std::uintmax_t{1} << 20;  // the largest zone has four thousand

class DataSource : public cctz::ZoneInfoSource {
public:
    explicit DataSource(std::string data) : data_(std::move(data)) {}

    std::size_t Read(void* target, std::size_t size) override {
        const std::size_t count = std::min(size, data_.size() - position_);
        std::memcpy(target, data_.data() + position_, count);
        position_ += count;
        return count;
    }
    int Skip(std::size_t offset) override {
        const bool isInside = offset <= data_.size() - position_;
        position_ += isInside ? offset : 0;
        return isInside ? 0 : -1;
    }

private:
    std::string data_;
    std::size_t position_ = 0;
};

// The library keeps what it loaded by name as long as the process lives. Here a zone's name is its data: what changed
// is another zone, and what only was touched is the same.
std::unique_ptr<cctz::ZoneInfoSource> sourceNamedByItsData(
    const std::string& name, const std::function<std::unique_ptr<cctz::ZoneInfoSource>(const std::string&)>&) {
    return std::make_unique<DataSource>(name);
}

std::optional<absl::TimeZone> zoneFromData(const std::string& data) {
    absl::TimeZone zone;
    return absl::LoadTimeZone(data, &zone) ? std::optional(zone) : std::nullopt;
}

std::optional<std::string> bytesOf(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error) || std::filesystem::file_size(file, error) > kMaximumBytes) {
        return std::nullopt;
    }
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

// The data without the rule in their last line, when that is one with daylight saving; nil when there is none.
std::optional<std::string> withoutRule(const std::string& data) {
    const std::size_t start = data.ends_with('\n') ? data.rfind('\n', data.size() - 2) : std::string::npos;
    if (start == std::string::npos || data.find(',', start) == std::string::npos) {
        return std::nullopt;
    }
    return data.substr(0, start + 1) + "\n";
}

}  // namespace

std::optional<ZoneRules> ZoneRules::fromFile(const std::filesystem::path& file) {
    auto data = bytesOf(file);
    if (!data || !data->starts_with(kMagic)) {
        return std::nullopt;
    }
    ZoneRules rules;
    rules.data_ = *std::move(data);
    const auto listed = withoutRule(rules.data_);
    const auto zone = zoneFromData(listed.value_or(rules.data_));
    if (!zone) {
        return std::nullopt;
    }
    rules.zone_ = *zone;
    if (absl::TimeZone::CivilTransition last; listed && zone->PrevTransition(absl::InfiniteFuture(), &last)) {
        constexpr int kMostMoved = 86400;  // seconds: more than any zone's clocks are moved
        rules.listedUntil_ = zone->At(last.to).trans;
        rules.listedUntilWall_ = last.to - kMostMoved;
    }
    return rules;
}

absl::TimeZone ZoneRules::zone(bool isListed) const { return isListed ? zone_ : zoneFromData(data_).value_or(zone_); }

}  // namespace lunabrook

namespace absl {
ABSL_NAMESPACE_BEGIN
namespace time_internal::cctz_extension {
ZoneInfoSourceFactory zone_info_source_factory = lunabrook::sourceNamedByItsData;
}  // namespace time_internal::cctz_extension
ABSL_NAMESPACE_END
}  // namespace absl
