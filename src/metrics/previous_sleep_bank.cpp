// The sleep bank from the cache: after the night hour has struck, the cached bedtime is that of a day ago.

#include <array>
#include <string>

#include "metrics/group_metrics.h"
#include "metrics/sleep_bank.h"
#include "platform/text/string_format.h"
#include "platform/text/text_case.h"

namespace lunabrook {

namespace {

constexpr double kStaleCacheSeconds = 60.0;

std::string withoutBlanks(const std::string& text) { return stringByReplacing(text, " ", ""); }

std::string summary(const Dictionary& result, const Device& device, FormatTools& formatTools) {
    const std::string* bedtime = stringForKey(result, kLatestBedTime);
    // The blank after the third colon is meant, and so is the forecast under the name of the required hours.
    return localizedStringWithFormat(
        device.locale(), R"({"%@":"%@", "%@":"%@", "%@": "%.2f", "%@":"%.2f"})",
        {withoutBlanks(device.localizedString("Tonight's Bedtime")),
         bedtime != nullptr ? std::optional(*bedtime) : std::nullopt,
         withoutBlanks(device.localizedString("Wake time")), formatTools.dayTime(dateForKey(result, kWakeTime)),
         withoutBlanks(capitalizedString(device.localizedString("Time until bed"))),
         floatForKey(result, kTimeUntilBed, 0.0F) / 3600.0, withoutBlanks(device.localizedString("Required Hours")),
         floatForKey(result, kBankForecast, 0.0F) / 3600.0});
}

}  // namespace

void setTimeLeft(Dictionary& result, const Device& device, FormatTools& formatTools, double offsetSeconds, Date now) {
    double untilBed = 0;
    double untilWake = 0;
    if (const auto bed = dateForKey(result, kBedTime)) {
        const Date adjusted = dateByAddingSeconds(*bed, offsetSeconds);
        untilBed = secondsFrom(now, adjusted);
        result.emplace(kAdjustedBedTime, adjusted);
    }
    if (const auto wake = dateForKey(result, kWakeTime)) {
        untilWake = secondsFrom(now, dateByAddingSeconds(*wake, offsetSeconds));
    }
    result.emplace(kTimeUntilBed, narrowed(untilBed));
    setValue(result, kTimeUntilBedLabel, formatTools.formattedTimeInterval(untilBed));
    setValue(result, kTimeUntilWakeLabel, formatTools.formattedTimeInterval(untilWake));
    result.emplace(kPasteItem, summary(result, device, formatTools));
}

std::optional<Dictionary> GroupMetrics::returnPreviousSleepBank() {
    constexpr std::array kCopied = {kBankBalance,   kBankForecast,   kBankPercent, kBedTime,
                                    kLatestBedTime, kLatestBedLabel, kWakeTime,    kWakeTimeLabel};
    openStoreAndTools();
    const auto start = getFromDateForNightHour(configuredNightHour());
    const auto update = groupPrefs_->dateForKey(kCachedSleepBankUpdate);
    // Written negated: a distance that is not a number is not fresh.
    if (!start || !update || !(secondsFrom(dateByAddingSeconds(*start, -kDaySeconds), *update) > kStaleCacheSeconds)) {
        return std::nullopt;
    }
    Dictionary result;
    if (const auto cached = groupPrefs_->dictionaryForKey(kCachedSleepBank)) {
        for (const std::string_view key : kCopied) {
            if (const Value* value = valueForKey(*cached, key)) {
                result.emplace(key, *value);
            }
        }
    }
    setTimeLeft(result, device_, *formatTools_, kDaySeconds, device_.now());
    return result;
}

}  // namespace lunabrook
