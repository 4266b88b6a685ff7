// The options that say which device a program works on: --preferences, --now, --time-zone, --locale, --language,
// --bundle.

#pragma once

#include <optional>

#include "host/device_options.h"
#include "platform/device/standard_output.h"

namespace CLI {
class App;
}

namespace lunabrook {

// `options` is filled when the application parses its arguments.
void addDeviceOptions(CLI::App& app, DeviceOptions& options);

// Parses the arguments of a service. Nil when it shall serve; else its exit status: 0 after the help or the version, 1
// when they could not be written, 2 for a wrong call, which one line on standard error tells.
std::optional<int> exitAfterParsing(CLI::App& app, int argc, char** argv, StandardOutput& output);

}  // namespace lunabrook
