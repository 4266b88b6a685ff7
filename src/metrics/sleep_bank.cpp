// The sleep bank: a weighted average of the last seven days' sleep against the need, and from it tonight's bedtime.
//
// The report day weighs 7, the day six days before it 1. The forecast is the sleep which, weighing 7 in tomorrow's
// span, brings that span's average to the need.
//   seven days of 8 hours, need 8 hours -> balance 28800 s, forecast 28800 s: "Try to be in bed by 10:15 PM"

#include "metrics/sleep_bank.h"

#include <algorithm>
#include <string>

#include "metrics/group_metrics.h"
#include "metrics/store_keys.h"
#include "platform/text/string_format.h"

namespace lunabrook {

namespace {

// Of "bankDict"; beside these it holds the seconds slept under each day's key.
constexpr std::string_view kMedianWake = "medianWake";    // seconds after the start of the sleep day
constexpr std::string_view kAverageWake = "averageWake";  // the same; used when there is no median
constexpr std::string_view kAverageEfficiency = "averageEfficiency";

// Of the settings; %d is the weekday, 0 Monday to 6 Sunday.
constexpr std::string_view kWakeFixed = "WakeFixed%d";
constexpr std::string_view kWakeTimeOfDay = "WakeTime%d";  // seconds after local midnight
constexpr std::string_view kMinimumHours = "minimumHours";
constexpr std::string_view kMaximumHours = "maximumHours";

constexpr int kDays = 7;
constexpr float kDefaultRequiredHours = 8.0F;
constexpr float kDefaultEfficiency = 90.0F;

struct Balance {
    float average = 0;   // seconds
    float forecast = 0;  // seconds
};

float requiredHours(const Dictionary& bank) { return floatForKey(bank, kRequiredHours, kDefaultRequiredHours); }

float wakeOffset(const Dictionary& bank) {
    const float median = floatForKey(bank, kMedianWake, 0.0F);
    return median > 0 ? median : floatForKey(bank, kAverageWake, 0.0F);
}

// Seconds slept on the day; nil when there is no entry or a negative one. The watch stands in for the report day.
std::optional<float> sleepOfDay(const Dictionary& bank, FormatTools& formatTools, Date day, float watchSleep) {
    const auto key = formatTools.YYMMDD(day);
    const Value* entry = key ? valueForKey(bank, *key) : nullptr;
    if (entry == nullptr) {
        return watchSleep > 0 ? std::optional(watchSleep) : std::nullopt;
    }
    const float seconds = entry->floatValue();
    return seconds < 0 ? std::nullopt : std::optional(seconds);
}

// Nil when no day is present. Sums are double, each product of a weight single.
std::optional<Balance> sevenDayBalance(const Dictionary& bank, FormatTools& formatTools, Date morning, float required,
                                       float watchSleep) {
    double sum = 0;
    double weights = 0;
    double tomorrow = 0;  // the six later days with tomorrow's weights; a missing day counts as slept in full
    double target = 0;
    int present = 0;
    for (int i = 0; i < kDays; ++i) {
        const float weight = static_cast<float>(i + 1);
        const Date day = dateByAddingSeconds(morning, (i + 1 - kDays) * kDaySeconds);
        const auto slept = sleepOfDay(bank, formatTools, day, i + 1 == kDays ? watchSleep : 0.0F);
        if (slept) {
            sum += weight * *slept;
            weights += weight;
            ++present;
        }
        if (i >= 1) {
            tomorrow += (weight - 1.0F) * slept.value_or(required);
        }
        target += weight * required;
    }
    if (weights <= 0) {
        return std::nullopt;
    }
    const float average = narrowed(sum / weights);
    const bool hasHistory = tomorrow > 0 && present > 1;
    const double forecast = hasHistory ? (target - tomorrow) / kDays : 2.0 * required - average;
    return Balance{average, narrowed(forecast)};
}

// The morning that follows the coming night. At night hour 0 there is none: the report day's own stands in.
Date targetMorning(Date morning, std::int64_t nightHour, std::int64_t currentHour) {
    return nightHour >= 1 && currentHour < nightHour ? dateByAddingSeconds(morning, kDaySeconds) : morning;
}

std::optional<Date> fixedWake(const GroupMetrics& metrics, FormatTools& formatTools, Date target, Date morning) {
    const std::int64_t weekday = formatTools.getWeekdayNoForDate(target);  // 1 is Sunday
    const std::int64_t index = weekday < 2 ? 6 : weekday - 2;
    if (!metrics.getLunabrookSwitchValueForKey(stringWithFormat(kWakeFixed, {index}))) {
        return std::nullopt;
    }
    const float seconds = metrics.getLunabrookConfigValueForKey(stringWithFormat(kWakeTimeOfDay, {index}));
    const auto midnight = formatTools.dateForDate(morning, 0, 0);
    return seconds >= 0 && midnight ? std::optional(dateByAddingSeconds(*midnight, seconds)) : std::nullopt;
}

// Seconds in bed for the forecast, held between the least and the most hours to plan for.
double timeInBed(const GroupMetrics& metrics, float neededHours, float forecast, float efficiency) {
    float minimum = metrics.getLunabrookConfigValueForKey(kMinimumHours);
    if (!(minimum >= 1.0F)) {
        minimum = neededHours - 1.0F;
    }
    float maximum = metrics.getLunabrookConfigValueForKey(kMaximumHours);
    if (maximum < minimum) {
        maximum = neededHours + 2.0F;
    }
    const double inBedPerAsleep = 100.0F / efficiency;
    if (minimum * 3600.0 > forecast) {
        return inBedPerAsleep * minimum * 3600.0;
    }
    if (maximum * 3600.0 < forecast) {
        return inBedPerAsleep * maximum * 3600.0;
    }
    return inBedPerAsleep * forecast;
}

// Absurd settings plan for dates that no store can hold.
bool canBeCached(const Dictionary& plan) {
    return std::all_of(plan.begin(), plan.end(), [](const auto& entry) {
        return entry.second.date() == nullptr || isOfFourDigitYear(*entry.second.date());
    });
}

}  // namespace

std::optional<Dictionary> GroupMetrics::requestSleepBank() {
    openStoreAndTools();
    if (shouldReportPreviousDay()) {
        if (auto previous = returnPreviousSleepBank()) {
            return previous;
        }
    }
    const auto bank = groupPrefs_->dictionaryForKey(kBankDict);
    const auto start = bank ? getFromDateForNightHour(nightHourOfBank(*bank)) : std::nullopt;
    if (!start) {
        return std::nullopt;
    }
    const auto watch = validWatchRecord();
    const float watchSleep = watch ? floatForKey(*watch, kRawSleepTime, 0.0F) : 0.0F;
    const float required = requiredHours(*bank) * 3600.0F;
    const Date morning = dateByAddingSeconds(*start, FormatTools::kHalfDaySeconds);
    const std::int64_t currentHour = formatTools_->currentHour(device_.now());
    const Date target = targetMorning(morning, nightHourOfBank(*bank), currentHour);
    const auto wake = fixedWake(*this, *formatTools_, target, morning);
    const auto balance = sevenDayBalance(*bank, *formatTools_, morning, required, watchSleep);
    if (!balance || !(balance->average > 0)) {
        return std::nullopt;
    }
    Dictionary result;
    result.emplace(kBankBalance, balance->average);
    result.emplace(kBankForecast, balance->forecast);
    result.emplace(kBankPercent, balance->average / required);
    if (wakeOffset(*bank) > 0) {  // else no plan for tonight, and nothing to cache
        planTonight(result, *bank, wake);
        if (canBeCached(result)) {
            groupPrefs_->setObjects(
                {{std::string(kCachedSleepBank), result}, {std::string(kCachedSleepBankUpdate), device_.now()}});
        }
    }
    return result;
}

void GroupMetrics::planTonight(Dictionary& result, const Dictionary& bank, const std::optional<Date>& fixedWake) {
    const std::int64_t nightHour = nightHourOfBank(bank);
    const auto start = getFromDateForNightHour(nightHour);
    if (!start) {
        return;
    }
    const Date wake = fixedWake.value_or(dateByAddingSeconds(*start, wakeOffset(bank)));
    const float forecast = floatForKey(result, kBankForecast, 0.0F);
    const float efficiency = floatForKey(bank, kAverageEfficiency, kDefaultEfficiency);
    const Date latest = dateByAddingSeconds(wake, -timeInBed(*this, requiredHours(bank), forecast, efficiency));
    const Date bedtime = latest < *start ? *start : latest;
    const auto bedtimeText = formatTools_->dayTime(bedtime);

    result.emplace(kBedTime, bedtime);
    setValue(result, kLatestBedTime, bedtimeText);
    result.emplace(kLatestBedLabel, stringWithFormat(device_.localizedString("Try to be in bed by %@"), {bedtimeText}));
    result.emplace(kWakeTime, wake);
    setValue(result, kWakeTimeLabel, formatTools_->dayTime(wake));
    const Date now = device_.now();
    const bool hasStruck = nightHour > 0 && formatTools_->currentHour(now) >= nightHour;
    setTimeLeft(result, device_, *formatTools_, hasStruck ? 0.0 : kDaySeconds, now);
}

}  // namespace lunabrook
