// Blood oxygen (SpO2) of the night, in per cent.
//
//   "Today's average SpO2 is 95.4%. Today's SpO2 range is 89% to 99%."

#include "metrics/group_metrics.h"
#include "metrics/nightly_average.h"

namespace lunabrook {

namespace {

constexpr NightlyAverage kBloodOxygen = {
    .record = "spO2Dict",
    .name = kSpO2Name,
    .infoKey = kTodaysSpO2Info,
    .title = "Sleep SpO2",
    .averagePhrase = "Today's average SpO2 is",
    .rangePhrase = "Today's SpO2 range is",
    .unit = "",
    .average = "%.1f%%",
    .bound = "%.0f%%",
    .range = "%.0f%% - %.0f%%",
    .average7 = "⑦ %.1f%%",
    .range7 = "⑦ %.0f%% - %.0f%%",
    .rise = "%.1f%%↗",
    .fall = "%.1f%%↘",
    .widgetLabel = "",
    .widget = "",
};

}  // namespace

std::optional<Dictionary> GroupMetrics::requestSpO2() { return requestNightlyAverage(kBloodOxygen); }

}  // namespace lunabrook
