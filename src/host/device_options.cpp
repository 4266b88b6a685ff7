#include "host/device_options.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "platform/text/display_width.h"
#include "platform/text/text_case.h"
#include "platform/time/iso8601.h"

namespace lunabrook {

namespace {

using Notes = std::vector<std::string>;

// Empty when nothing says where.
std::filesystem::path preferencesFolder(const std::optional<std::string>& option) {
    if (option) {
        return *option;
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

// In a build tree `resources` stands beside the executable; installed, it is the share folder of the same prefix, and a
// folder of that name beside the executable is somebody else's.
std::filesystem::path bundleFolder(const std::optional<std::string>& option) {
    if (option) {
        return *option;
    }
    std::error_code error;
    const std::filesystem::path programs = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    const std::filesystem::path built = programs / "resources";
    return std::filesystem::exists(built / "Intents.json", error) ? built : programs.parent_path() / "share/lunabrook";
}

// "sr_RS.UTF-8@latin" is "sr_Latn_RS", "de_DE@euro" is "de_DE"; "C" and "POSIX" mean American English.
std::string localeIdentifier(const std::string& name) {
    std::string locale = name.substr(0, name.find_first_of(".@"));
    if (locale == "C" || locale == "POSIX") {
        return "en_US";
    }
    constexpr std::pair<std::string_view, std::string_view> kScripts[] = {
        {"@latin", "_Latn"}, {"@cyrillic", "_Cyrl"}, {"@devanagari", "_Deva"}};
    const std::size_t language = std::min(locale.find('_'), locale.size());
    for (const auto& [modifier, script] : kScripts) {
        if (name.ends_with(modifier)) {
            return locale.substr(0, language).append(script).append(locale, language);
        }
    }
    return locale;
}

std::string languageTag(const std::string& name) { return stringByReplacing(localeIdentifier(name), "_", "-"); }

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

// Of the texts: what is asked for, else what the environment says of messages; a locale that is asked for goes before
// the environment's.
std::vector<std::string> preferredLanguages(const DeviceOptions& options) {
    if (options.languages) {
        return languagesOfList(*options.languages, ',');
    }
    std::vector<std::string> languages = languagesOfList(environment("LANGUAGE"), ':');
    std::string locale = options.locale.value_or("");
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        locale = locale.empty() ? environment(variable) : locale;
    }
    languages.push_back(languageTag(locale.empty() ? "C" : locale));
    return languages;
}

std::string namesNothing(std::string_view source, std::string_view kind, std::string_view value) {
    return std::string(source) + " names no " + std::string(kind) + ": " + quotedText(value) + "; ";
}

std::variant<Locale, WrongCall> findLocale(const std::optional<std::string>& option, Notes& notes) {
    if (option) {
        if (auto locale = Locale::named(*option)) {
            return *std::move(locale);
        }
        return WrongCall{namesNothing("--locale", "known locale", *option) + "say one like en_US or de_DE"};
    }
    const Locale english = Locale::named("en_US").value();
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const std::string name = environment(variable);
        if (name.empty()) {
            continue;
        }
        const std::string identifier = localeIdentifier(name);
        for (const std::string& candidate : {identifier, identifier.substr(0, identifier.find('_'))}) {
            if (auto locale = Locale::named(candidate)) {
                return *std::move(locale);
            }
        }
        notes.push_back(namesNothing(variable, "known locale", name) + "formats are American English");
        return english;
    }
    return english;
}

std::variant<TimeZone, WrongCall> findTimeZone(const std::optional<std::string>& option, Notes& notes) {
    const std::string folder = environment("TZDIR");
    const auto named = [&folder](const std::string& name) {
        return TimeZone::named(name, folder.empty() ? TimeZone::kZoneData : folder.c_str());
    };
    if (option) {
        if (auto zone = named(*option)) {
            return *std::move(zone);
        }
        return WrongCall{namesNothing("--time-zone", "zone of this system", *option) +
                         "say one like Europe/Berlin or America/New_York"};
    }
    const std::string name = environment("TZ");
    if (name.empty()) {
        return TimeZone::system();
    }
    if (auto zone = named(name.substr(name.starts_with(':') ? 1 : 0))) {
        return *std::move(zone);
    }
    notes.push_back(namesNothing("TZ", "zone of this system", name) + "the system's own zone is used");
    return TimeZone::system();
}

std::variant<std::function<Date()>, WrongCall> clockOf(const std::optional<std::string>& now, const TimeZone& zone) {
    if (!now) {
        return [] { return std::chrono::time_point_cast<TimeInterval>(std::chrono::system_clock::now()); };
    }
    const auto moment = dateFromIso8601String(*now, zone);
    if (!moment) {
        return WrongCall{"--now is no moment: " + quotedText(*now) +
                         "; say one like 2026-06-10T08:30, 2026-06-10T08:30:00+02:00 or 2026-06-10T06:30:00Z"};
    }
    return [moment = *moment] { return moment; };
}

}  // namespace

std::string environment(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr ? value : "";
}

std::variant<FoundDevice, WrongCall> findDevice(const DeviceOptions& options) {
    Notes notes;
    auto zone = findTimeZone(options.timeZone, notes);
    if (auto* wrong = std::get_if<WrongCall>(&zone)) {
        return std::move(*wrong);
    }
    auto clock = clockOf(options.now, std::get<TimeZone>(zone));
    if (auto* wrong = std::get_if<WrongCall>(&clock)) {
        return std::move(*wrong);
    }
    if (options.preferences == "") {
        return WrongCall{namesNothing("--preferences", "folder", "") + "say which, or leave it out"};
    }
    if (options.languages && languagesOfList(*options.languages, ',').empty()) {
        return WrongCall{namesNothing("--language", "language", *options.languages) + "say one like en or de,en"};
    }
    std::filesystem::path preferences = preferencesFolder(options.preferences);
    if (preferences.empty()) {
        return WrongCall{"there is no HOME to keep the store in; name a folder with --preferences"};
    }
    std::error_code error;
    if (std::filesystem::exists(preferences, error) && !std::filesystem::is_directory(preferences, error)) {
        return WrongCall{"the store's folder is a file: " + quotedText(preferences.string()) +
                         "; name its folder with --preferences"};
    }
    std::filesystem::path bundle = bundleFolder(options.bundle);
    if (options.bundle && !std::filesystem::is_directory(bundle, error)) {
        return WrongCall{namesNothing("--bundle", "folder", *options.bundle) + "say one with <language>.lproj in it"};
    }
    auto locale = findLocale(options.locale, notes);
    if (auto* wrong = std::get_if<WrongCall>(&locale)) {
        return std::move(*wrong);
    }
    return FoundDevice{.settings = {.clock = std::get<std::function<Date()>>(std::move(clock)),
                                    .timeZone = std::get<TimeZone>(std::move(zone)),
                                    .locale = std::get<Locale>(std::move(locale)),
                                    .preferredLanguages = preferredLanguages(options),
                                    .bundle = std::move(bundle),
                                    .preferences = std::move(preferences)},
                       .notes = std::move(notes)};
}

}  // namespace lunabrook
