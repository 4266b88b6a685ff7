// The device of this process, from the command's options and the environment.
//
//   --now 2026-06-10T08:30:00+02:00 --locale de_DE --preferences DIR

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/device/device.h"

namespace lunabrook {

struct DeviceOptions {
    std::optional<std::string> preferences;  // nil: as the environment says
    std::optional<std::string> now;          // the clock stands still there
    std::optional<std::string> timeZone;     // nil: TZ or the system's
    std::optional<std::string> locale;       // nil: LC_ALL, LC_TIME or LANG
    std::optional<std::string> languages;    // "de,en"; nil: LANGUAGE, then the locale, LC_ALL, LC_MESSAGES or LANG
    std::optional<std::string> bundle;       // nil: beside the executable
};

// Why an option is wrong, and what would be right; one sentence.
struct WrongCall {
    std::string what;
};

// What the options and the environment come to. An option that does not hold is a wrong call; what the environment says
// and does not hold falls back, since it may have been set for other programs.
struct FoundDevice {
    Device::Settings settings;       // without a fault listener
    std::vector<std::string> notes;  // a sentence for each thing that fell back: TZ, the locale
};
std::variant<FoundDevice, WrongCall> findDevice(const DeviceOptions& options);

// A variable's value; one that is unset is empty, as everywhere in the system's environment.
std::string environment(const char* variable);

}  // namespace lunabrook
