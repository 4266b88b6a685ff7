// Bedtime consistency: how the average bedtime moved from the previous period to the current one.
//
//   "trendString": "15m earlier"

#include <string>

#include "metrics/group_metrics.h"
#include "metrics/result_keys.h"
#include "metrics/store_keys.h"
#include "platform/text/string_format.h"

namespace lunabrook {

namespace {

constexpr std::string_view kLastConsistency = "lastConsistency";  // the latest average is the headline
constexpr std::string_view kStartDate = "startDate";
constexpr std::string_view kAverageBedtime = "averageBedtime";  // seconds after the start date
constexpr std::string_view kPreviousAverageBedtime = "prevAverageBedtime";

constexpr double kConsistentSeconds = 60.0;

struct Trend {
    std::string text;
    std::string shift;
};

Trend trendOf(const Device& device, FormatTools& formatTools, double difference) {
    const auto moved = [&](double seconds, std::string_view direction) {
        const auto duration = formatTools.formattedMinInterval(seconds);
        return Trend{stringWithFormat("%@ %@", {duration, device.localizedString(direction)}),
                     stringWithFormat("%@", {duration})};
    };
    if (difference > kConsistentSeconds) {
        return moved(difference, "later");
    }
    if (difference < -kConsistentSeconds) {
        return moved(-difference, "earlier");
    }
    return {device.localizedString("Consistent"), ""};
}

}  // namespace

std::optional<Dictionary> GroupMetrics::requestConsistencyDict() {
    openStoreAndTools();
    const auto bank = groupPrefs_->dictionaryForKey(kBankDict);
    const auto start = bank ? dateForKey(*bank, kStartDate) : std::nullopt;
    if (!start) {
        return std::nullopt;
    }
    const bool showsLatest = groupPrefs_->boolForKey(kLastConsistency);
    const double average = floatForKey(*bank, kAverageBedtime, 0.0F);
    const double previous = floatForKey(*bank, kPreviousAverageBedtime, 0.0F);
    const double difference = average - previous;
    const auto bedtime = [&](double seconds) {
        return stringWithFormat("%@", {formatTools_->dayTime(dateByAddingSeconds(*start, seconds))});
    };
    Trend trend = trendOf(device_, *formatTools_, difference);
    // With the setting on, the date shows the previous average and the stars the current one: the crossing is meant.
    return Dictionary{{std::string(kAvgBedtimeDateString), bedtime(showsLatest ? previous : average)},
                      {"bedTrend", narrowed(difference)},
                      {std::string(kTrendString), std::move(trend.text)},
                      {"starsLabel", showsLatest ? bedtime(average) : std::move(trend.shift)}};
}

}  // namespace lunabrook
