// The result dictionaries of one morning, nil where a metric has no data, and the day they are of.

#pragma once

#include <optional>

#include "platform/device/device.h"
#include "platform/values/value.h"

namespace lunabrook {

struct Morning {
    std::optional<Dictionary> quality;
    std::optional<Dictionary> readiness;
    std::optional<Dictionary> octane;
    std::optional<Dictionary> spO2;
    std::optional<Dictionary> respRate;
    std::optional<Dictionary> wristTemp;
    std::optional<Dictionary> consistency;
    std::optional<Dictionary> sleepBank;
    std::optional<Date>
        reportDay;  // within the calendar day under which the sleep day is filed; nil beyond the calendar
};

Morning morningOf(const Device& device);

// Every text that the morning at a glance shows, for a smaller display: one dictionary of labels for each metric that
// has data, under its request's name ("requestReadiness": {"rating": "Good", ...}).
Dictionary displayLabels(const Morning& morning);

}  // namespace lunabrook
