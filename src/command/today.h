// The morning at a glance: a page of 80 columns made from the result dictionaries alone.

#pragma once

#include <string>

#include "platform/device/device.h"

namespace lunabrook {

// Rings as bars, readiness and sleep fuel with stars, nightly averages with ranges and arrows, the bank with tonight's
// bedtime; a quiet "No Data" where a metric has none.
std::string todayText(const Device& device, bool hasColours);

}  // namespace lunabrook
