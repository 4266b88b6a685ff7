// The result dictionaries of one morning, each under its request's name; nil where a metric has no data.

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
    std::optional<Dictionary> sleepBank;
};

Morning morningOf(const Device& device);

// Every text that the morning at a glance shows, for a smaller display: one dictionary of labels for each metric that
// has data, under its request's name ("requestReadiness": {"rating": "Good", ...}).
Dictionary displayLabels(const Morning& morning);

}  // namespace lunabrook
