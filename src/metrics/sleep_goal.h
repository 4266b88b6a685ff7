// How long a night should be, for the sleep rings and the time-asleep answer: 7.5 hours -> 27000 s.

#pragma once

namespace lunabrook {

// Seconds. Less than four hours, and so a setting that is missing, counts as eight.
inline float sleepGoalSeconds(float requiredHours) {
    constexpr float kLeastHours = 4.0F;
    constexpr float kDefaultSeconds = 28800.0F;
    return requiredHours < kLeastHours ? kDefaultSeconds : requiredHours * 3600.0F;
}

}  // namespace lunabrook
