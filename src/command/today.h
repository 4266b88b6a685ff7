// The morning at a glance as a page for a terminal.

#pragma once

#include <string>

#include "command/glance.h"

namespace lunabrook {

// Rings as bars, readiness and sleep fuel with stars, nightly averages with ranges and arrows, the bank with tonight's
// bedtime; a quiet "No Data" where a metric has none. Made for 80 columns; fewer, down to 48, lose whole columns, and
// below that the ends of lines.
std::string todayText(const Glance& glance, int columns, bool hasColours);

}  // namespace lunabrook
