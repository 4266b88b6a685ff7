// Lights off: notes in the shared store that the user goes to bed now, and says good night.
//
//   "response": "Good Night", "statusLabel": "💤 In bed at 10:45\u202FPM.\nOpen app to cancel."

#pragma once

#include <memory>
#include <optional>

#include "answers/answer_keys.h"
#include "platform/device/device.h"
#include "platform/device/user_defaults.h"
#include "platform/values/value.h"
#include "timekit/format_tools.h"

namespace lunabrook {

class HandleLightsOff {
public:
    explicit HandleLightsOff(const Device& device) : device_(device) {}
    virtual ~HandleLightsOff() = default;

    // The moment is on the disk when this returns, or a fault was told to the device; the answer is the same either
    // way and never nil.
    virtual std::optional<Dictionary> turnLightsOff();

private:
    const Device& device_;
    std::unique_ptr<UserDefaults> groupPrefs_;
    std::unique_ptr<FormatTools> formatTools_;
};

}  // namespace lunabrook
