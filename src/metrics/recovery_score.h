// The score behind readiness and sleep fuel: heart-rate variability (HRV) and heart rate, each against its baseline.
//
// Model: each signal gives a sub-score, their mean is graded into one of seven bands, and within its band the score
// runs from one star to the next. Readiness and sleep fuel differ by a RecoveryMetric.
//   HRV 60 ms over 50, rate 48 bpm over 60 -> score 1.25, grade 1 of 7 ("Optimal"), 5.17 stars

#pragma once

#include <array>
#include <string_view>

#include "platform/device/device.h"
#include "platform/values/value.h"

namespace lunabrook {

// 0 is "not measured"; a signal counts when it and its baseline are positive.
struct RecoverySignals {
    float hrv = 0;
    float hrvBaseline = 0;  // both milliseconds
    float rate = 0;
    float rateBaseline = 0;  // both beats per minute
};

// All texts are English fragments, looked up in the bundle.
struct RecoveryMetric {
    std::string_view heading;
    std::string_view hrvBaselineName;
    std::string_view rateBaselineName;
    std::array<std::string_view, 7> gradeLabels;  // best first
    bool speaksStars = false;                     // the sentence gives the stars, not the grade's label
};

// Of a record of "bankDict".
RecoverySignals recoverySignals(const Dictionary& record);

// Nil when neither signal scores above 0.
std::optional<Dictionary> recoveryResult(const Device& device, const RecoverySignals& signals,
                                         const RecoveryMetric& metric);

}  // namespace lunabrook
