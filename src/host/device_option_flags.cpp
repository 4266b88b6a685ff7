#include "host/device_option_flags.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

namespace lunabrook {

void addDeviceOptions(CLI::App& app, DeviceOptions& options) {
    const auto add = [&app](const char* name, auto& value, const char* type, const char* help) {
        app.add_option(name, value, help)->type_name(type)->group("Device")->take_last();
    };
    add("--preferences", options.preferences, "DIR", "Folder of the store (else $LUNABROOK_PREFERENCES)");
    add("--now", options.now, "TIME", "Stop the clock there: 2026-06-10T08:30:00+02:00");
    add("--time-zone", options.timeZone, "ID", "Europe/Berlin (else $TZ or the system's)");
    add("--locale", options.locale, "ID", "de_DE (else $LC_ALL, $LC_TIME or $LANG)");
    add("--language", options.languages, "ID[,ID...]", "Languages of the texts, most wanted first: de,en");
    add("--bundle", options.bundle, "DIR", "Folder with the texts, <language>.lproj in it");
}

std::optional<int> exitAfterParsing(CLI::App& app, int argc, char** argv, StandardOutput& output) {
    try {
        app.parse(argc, argv);
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            app.exit(error);
            return output.finish() == 0 ? 0 : 1;
        }
        constexpr int kWrongCall = 2;
        const std::string text = error.what();
        const std::string program = app.get_name();
        std::cerr << program << ": " << text.substr(0, text.find('\n')) << " (`" << program
                  << " --help` shows the options)\n";
        return kWrongCall;
    }
}

}  // namespace lunabrook
