#include "host/device_options.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "platform/text/text_case.h"
#include "platform/time/iso8601.h"

namespace lunabrook {

namespace {

// Empty counts as unset, as everywhere in the system's environment.
std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

// Empty when nothing says where.
std::filesystem::path preferencesFolder(const std::string& option) {
    if (!option.empty()) {
        return option;
    }
    if (const std::string own = environment("LUNABROOK_PREFERENCES"); !own.empty()) {
        return own;
    }
    if (const std::string data = environment("XDG_DATA_HOME"); !data.empty()) {
        return std::filesystem::path(data) / "lunabrook";
    }
    const std::string home = environment("HOME");
    return home.empty() ? std::filesystem::path() : std::filesystem::path(home) / ".local/share/lunabrook";
}

// In a build tree `resources` stands beside the executable; installed, it is the share folder of the same prefix.
std::filesystem::path bundleFolder(const std::string& option) {
    if (!option.empty()) {
        return option;
    }
    std::error_code error;
    const std::filesystem::path programs = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    const std::filesystem::path built = programs / "resources";
    return std::filesystem::exists(built, error) ? built : programs.parent_path() / "share/lunabrook";
}

struct Named {
    std::string source;  // "--locale", "LC_ALL"
    std::string value;
};

// "de_DE.UTF-8@euro" names the locale "de_DE"; "C" and "POSIX" mean American English.
std::string withoutCodeset(const std::string& name) {
    const std::string locale = name.substr(0, name.find_first_of(".@"));
    return locale == "C" || locale == "POSIX" ? "en_US" : locale;
}

Named localeName(const std::optional<std::string>& option) {
    if (option) {
        return {"--locale", *option};
    }
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        if (const std::string value = environment(variable); !value.empty()) {
            return {variable, withoutCodeset(value)};
        }
    }
    return {"the default", "en_US"};
}

std::string languageTag(const std::string& locale) {
    return stringByReplacing(locale.substr(0, locale.find_first_of(".@")), "_", "-");
}

std::vector<std::string> languagesOfList(const std::string& list, char separator) {
    std::vector<std::string> languages;
    for (std::size_t start = 0; start < list.size();) {
        const std::size_t end = std::min(list.find(separator, start), list.size());
        if (end > start) {
            languages.push_back(languageTag(list.substr(start, end - start)));
        }
        start = end + 1;
    }
    return languages;
}

std::vector<std::string> preferredLanguages(const std::string& option, const std::string& locale) {
    if (!option.empty()) {
        return languagesOfList(option, ',');
    }
    std::vector<std::string> languages = languagesOfList(environment("LANGUAGE"), ':');
    languages.push_back(languageTag(locale));
    return languages;
}

std::variant<TimeZone, WrongCall> timeZone(const std::optional<std::string>& option) {
    std::string name = option.value_or(environment("TZ"));
    if (!option && name.empty()) {
        return TimeZone::system();
    }
    if (!option && name.starts_with(':')) {
        name.erase(0, 1);
    }
    if (auto zone = TimeZone::named(name)) {
        return *std::move(zone);
    }
    return WrongCall{(option ? "--time-zone" : "TZ") + std::string(" names no zone of this system: \"") + name +
                     "\"; say one like Europe/Berlin or America/New_York"};
}

std::variant<std::function<Date()>, WrongCall> clockOf(const std::optional<std::string>& now) {
    if (!now) {
        return [] { return std::chrono::time_point_cast<TimeInterval>(std::chrono::system_clock::now()); };
    }
    const auto moment = dateFromIso8601String(*now);
    if (!moment) {
        return WrongCall{"--now is no moment: \"" + *now +
                         "\"; say one with a zone like 2026-06-10T08:30:00+02:00 or 2026-06-10T06:30:00Z"};
    }
    return [moment = *moment] { return moment; };
}

}  // namespace

std::variant<Device::Settings, WrongCall> deviceSettings(const DeviceOptions& options) {
    auto clock = clockOf(options.now);
    if (auto* wrong = std::get_if<WrongCall>(&clock)) {
        return std::move(*wrong);
    }
    auto zone = timeZone(options.timeZone);
    if (auto* wrong = std::get_if<WrongCall>(&zone)) {
        return std::move(*wrong);
    }
    std::filesystem::path preferences = preferencesFolder(options.preferences);
    if (preferences.empty()) {
        return WrongCall{"there is no HOME to keep the store in; name a folder with --preferences"};
    }
    const Named name = localeName(options.locale);
    auto locale = Locale::named(name.value);
    if (!locale) {
        return WrongCall{name.source + " names no known locale: \"" + name.value + "\"; say one like en_US or de_DE"};
    }
    return Device::Settings{
        .clock = std::get<std::function<Date()>>(std::move(clock)),
        .timeZone = std::get<TimeZone>(std::move(zone)),
        .locale = *std::move(locale),
        .preferredLanguages = preferredLanguages(options.languages, name.value),
        .bundle = bundleFolder(options.bundle),
        .preferences = std::move(preferences),
    };
}

}  // namespace lunabrook
