// The device of this process, from the command's options and the environment.
//
//   --now 2026-06-10T08:30:00+02:00 --locale de_DE --preferences DIR

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <variant>

#include "platform/device/device.h"

namespace lunabrook {

struct DeviceOptions {
    std::string preferences;              // empty: as the environment says
    std::optional<std::string> now;       // the clock stands still there
    std::optional<std::string> timeZone;  // nil: TZ or the system's
    std::optional<std::string> locale;    // nil: LC_ALL, LC_TIME or LANG
    std::string languages;                // "de,en"; empty: LANGUAGE, then the locale
    std::string bundle;                   // empty: beside the executable
};

// Why the options or the environment are wrong, and what would be right; one sentence.
struct WrongCall {
    std::string what;
};

// The settings without a fault listener.
std::variant<Device::Settings, WrongCall> deviceSettings(const DeviceOptions& options);

}  // namespace lunabrook
