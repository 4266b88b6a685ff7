// Which sleep day is reported, and whether a record belongs to it.

#include "metrics/group_metrics.h"
#include "metrics/store_keys.h"
#include "platform/time/calendar.h"

namespace lunabrook {

namespace {

constexpr std::int64_t kDefaultNightHour = 21;
constexpr double kStaleWatchSeconds = 60.0;

}  // namespace

void GroupMetrics::openStoreAndTools() {
    if (!formatTools_) {
        formatTools_ = std::make_unique<FormatTools>(device_);
    }
    if (!groupPrefs_) {
        groupPrefs_ = std::make_unique<UserDefaults>(device_, kGroupSuite);
    }
}

float GroupMetrics::getLunabrookConfigValueForKey(std::string_view key) const {
    const auto config = groupPrefs_ ? groupPrefs_->dictionaryForKey(kLunabrookConfig) : nullptr;
    return config ? floatForKey(*config, key, -1.0F) : -1.0F;
}

bool GroupMetrics::getLunabrookSwitchValueForKey(std::string_view key) const {
    const auto config = groupPrefs_ ? groupPrefs_->dictionaryForKey(kLunabrookConfig) : nullptr;
    return config && valueForKey(*config, key) != nullptr;
}

std::int64_t GroupMetrics::configuredNightHour() const {
    const std::int64_t hour = truncated(getLunabrookConfigValueForKey(kNightHour));
    return hour < 0 ? kDefaultNightHour : hour;
}

std::int64_t GroupMetrics::nightHourOfBank(const Dictionary& bank) {
    return integerForKey(bank, kNightHour, kDefaultNightHour);
}

bool GroupMetrics::shouldReportPreviousDay() {
    const std::int64_t nightHour = configuredNightHour();
    // The toolkit is not made here: without one it is hour 0, which no night hour from 1 on has reached.
    const std::int64_t currentHour = formatTools_ ? formatTools_->currentHour(device_.now()) : 0;
    return nightHour >= 1 && currentHour >= nightHour;
}

std::optional<Date> GroupMetrics::getFromDateForNightHour(std::int64_t nightHour) {
    if (!formatTools_) {
        formatTools_ = std::make_unique<FormatTools>(device_);
    }
    const Date now = device_.now();
    const std::int64_t currentHour = formatTools_->currentHour(now);
    if (nightHour < 0) {
        return std::nullopt;
    }
    const bool hasNotStruck = nightHour >= 1 && currentHour < nightHour;
    const Calendar calendar(device_.timeZone());
    auto components = calendar.componentsFromDate(hasNotStruck ? dateByAddingSeconds(now, -kDaySeconds) : now);
    if (!components) {
        return std::nullopt;
    }
    components->hour = nightHour;
    components->minute = 0;
    components->second = 0;
    return calendar.dateFromComponents(*components);
}

bool GroupMetrics::watchDictIsValid() {
    openStoreAndTools();
    const auto watch = groupPrefs_->dictionaryForKey(kWatchTrackDict);
    const auto synchronised = watch ? dateForKey(*watch, kRawSynchTime) : std::nullopt;
    if (!synchronised) {
        return false;
    }
    const auto from = getFromDateForNightHour(configuredNightHour());
    return from && secondsFrom(*from, *synchronised) > kStaleWatchSeconds;
}

std::shared_ptr<const Dictionary> GroupMetrics::validWatchRecord() {
    return watchDictIsValid() ? groupPrefs_->dictionaryForKey(kWatchTrackDict) : nullptr;
}

// Half a day after its beginning lies the morning that ends the night, and its calendar day.
std::optional<Date> GroupMetrics::morningOfNight(std::int64_t nightHour) {
    const auto from = getFromDateForNightHour(nightHour);
    return from ? std::optional(dateByAddingSeconds(*from, FormatTools::kHalfDaySeconds)) : std::nullopt;
}

std::optional<Date> GroupMetrics::reportDay() {
    openStoreAndTools();
    const auto bank = groupPrefs_->dictionaryForKey(kBankDict);
    return morningOfNight(bank ? nightHourOfBank(*bank) : configuredNightHour());
}

bool GroupMetrics::isReportDay(const Dictionary& bank, const std::string* dayKey) {
    const auto morning = morningOfNight(nightHourOfBank(bank));
    return morning && dayKey != nullptr && formatTools_->YYMMDD(morning) == *dayKey;
}

std::shared_ptr<const Dictionary> GroupMetrics::reportDayRecord(std::string_view name) {
    openStoreAndTools();
    const auto bank = groupPrefs_->dictionaryForKey(kBankDict);
    const Dictionary* record = bank ? dictionaryForKey(*bank, name) : nullptr;
    if (record == nullptr || !isReportDay(*bank, stringForKey(*record, kRecordKey))) {
        return nullptr;
    }
    return {bank, record};
}

}  // namespace lunabrook
