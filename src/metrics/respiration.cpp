// Respiration rate of the night, in breaths per minute.
//
//   "Today's average respiration rate is 14.6 BrPM. Today's respiration range is 12.3 to 17.9."

#include "metrics/group_metrics.h"
#include "metrics/nightly_average.h"

namespace lunabrook {

namespace {

constexpr NightlyAverage kRespirationRate = {
    .record = "respRateDict",
    .name = kRespRateName,
    .infoKey = kTodaysRespRateInfo,
    .title = "Respiration Rate",
    .averagePhrase = "Today's average respiration rate is",
    .rangePhrase = "Today's respiration range is",
    .unit = "BrPM",
    .average = "%.1f %@",
    .bound = "%.1f",
    .range = "%.1f - %.1f",
    .average7 = "⑦ %.1f",
    .range7 = "⑦ %.1f - %.1f",
    .rise = "%.1f↗",
    .fall = "%.1f↘",
    .widgetLabel = "averageRespRateWidgetLabel",
    .widget = "%.1f ",
};

}  // namespace

std::optional<Dictionary> GroupMetrics::requestRespRate() { return requestNightlyAverage(kRespirationRate); }

}  // namespace lunabrook
