// The options that say which device a program works on: --preferences, --now, --time-zone, --locale, --language,
// --bundle.

#pragma once

#include <string>

#include "host/device_options.h"

namespace CLI {
class App;
}

namespace lunabrook {

// `options` is filled when the application parses its arguments.
void addDeviceOptions(CLI::App& app, DeviceOptions& options);

// The options as they would be typed again, each with a blank behind it: "--preferences '/tmp/my store' ".
std::string typedOptions(const DeviceOptions& options);

}  // namespace lunabrook
