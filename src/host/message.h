// What a program says of itself: a line on standard error.
//
//   tell("lunabrook", "there is no verb \"toxxy\"") -> lunabrook: there is no verb "toxxy"

#pragma once

#include <string>
#include <string_view>

#include "host/device_options.h"

namespace lunabrook {

// After what was said on standard output. What a terminal would obey is shown as escapes: a message may hold what
// somebody typed, or named a file.
void tell(std::string_view program, const std::string& what);

// Whether a service can work on the device: nil, or what is wrong. What of the environment falls back is told.
std::optional<std::string> whatIsWrongWithDevice(std::string_view program, const DeviceOptions& device);

}  // namespace lunabrook
