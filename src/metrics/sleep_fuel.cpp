// Sleep fuel: readiness's score on the HRV and heart rate of the night, graded in fuels; the watch is not asked.
//
//   "Sleep Fuel Rating is premium."

#include "metrics/group_metrics.h"
#include "metrics/recovery_score.h"

namespace lunabrook {

namespace {

constexpr std::string_view kOctaneDict = "octaneDict";

constexpr RecoveryMetric kSleepFuel = {
    .heading = "Sleep Fuel Rating",
    .hrvBaselineName = "Baseline Sleep HRV",
    .rateBaselineName = "Baseline Sleep BPM",
    .gradeLabels = {"Rocket fuel", "Jet fuel", "Premium", "Plus", "Regular", "Poor", "Bad"},
};

}  // namespace

std::optional<Dictionary> GroupMetrics::requestOctane() {
    const auto record = reportDayRecord(kOctaneDict);
    return record ? recoveryResult(device_, recoverySignals(*record), kSleepFuel) : std::nullopt;
}

}  // namespace lunabrook
