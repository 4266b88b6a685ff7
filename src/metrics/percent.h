// A fraction as the number of a percentage: 0.98 -> 98. In single precision, as every sentence says it: a display that
// multiplied in double would show 85 where the sentence says 84.

#pragma once

namespace lunabrook {

constexpr float percentOf(float fraction) { return fraction * 100.0F; }

}  // namespace lunabrook
