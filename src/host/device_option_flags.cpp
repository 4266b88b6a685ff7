#include "host/device_option_flags.h"

#include <CLI/CLI.hpp>

namespace lunabrook {

void addDeviceOptions(CLI::App& app, DeviceOptions& options) {
    const char* group = "Device";
    app.add_option("--preferences", options.preferences, "Folder of the store (else $LUNABROOK_PREFERENCES)")
        ->type_name("DIR")
        ->group(group);
    app.add_option("--now", options.now, "Stop the clock there: 2026-06-10T08:30:00+02:00")
        ->type_name("TIME")
        ->group(group);
    app.add_option("--time-zone", options.timeZone, "Europe/Berlin (else $TZ or the system's)")
        ->type_name("ID")
        ->group(group);
    app.add_option("--locale", options.locale, "de_DE (else $LC_ALL, $LC_TIME or $LANG)")
        ->type_name("ID")
        ->group(group);
    app.add_option("--language", options.languages, "Languages of the texts, most wanted first: de,en")
        ->delimiter(',')
        ->expected(1)
        ->type_name("ID[,ID...]")
        ->group(group);
    app.add_option("--bundle", options.bundle, "Folder with the texts, <language>.lproj in it")
        ->type_name("DIR")
        ->group(group);
}

}  // namespace lunabrook
