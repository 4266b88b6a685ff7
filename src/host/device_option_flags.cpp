#include "host/device_option_flags.h"

#include <CLI/CLI.hpp>
#include <string>

#include "platform/text/text_case.h"

namespace lunabrook {

namespace {

// As a shell takes it for one word: in quotes unless it needs none.
std::string shellWord(const std::string& text) {
    constexpr const char* kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/._-+:,@";
    const bool isPlain = text.find_first_not_of(kPlain) == std::string::npos;
    return isPlain ? text : "'" + stringByReplacing(text, "'", "'\\''") + "'";
}

}  // namespace

void addDeviceOptions(CLI::App& app, DeviceOptions& options) {
    const auto add = [&app](const char* name, auto& value, const char* type, const char* help) {
        app.add_option(name, value, help)->type_name(type)->group("Device")->take_last();
    };
    add("--preferences", options.preferences, "DIR", "The store's folder (else $LUNABROOK_PREFERENCES)");
    add("--now", options.now, "TIME", "Stop the clock at 2026-06-10T08:30:00+02:00");
    add("--time-zone", options.timeZone, "ID", "Europe/Berlin (else $TZ or the system's)");
    add("--locale", options.locale, "ID", "de_DE (else $LC_ALL, $LC_TIME or $LANG)");
    add("--language", options.languages, "ID[,ID...]", "Languages of the texts, most wanted first: de,en");
    add("--bundle", options.bundle, "DIR", "Folder with the texts, <language>.lproj in it");
}

std::string typedOptions(const DeviceOptions& options) {
    std::string text;
    const auto add = [&text](const char* name, const std::optional<std::string>& value) {
        if (value) {
            text += std::string(name) + " " + shellWord(*value) + " ";
        }
    };
    add("--preferences", options.preferences);
    add("--now", options.now);
    add("--time-zone", options.timeZone);
    add("--locale", options.locale);
    add("--language", options.languages);
    add("--bundle", options.bundle);
    return text;
}

}  // namespace lunabrook
