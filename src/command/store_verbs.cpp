#include <functional>
#include <iostream>

#include "command/demo_week.h"
#include "command/verbs.h"
#include "host/json_output.h"
#include "metrics/sleep_bank.h"
#include "metrics/store_keys.h"
#include "platform/device/user_defaults.h"
#include "platform/files/file_bytes.h"
#include "platform/files/property_list.h"
#include "platform/text/display_width.h"

namespace lunabrook {

namespace {

constexpr std::string_view kMadeUp = "lunabrookDemo";  // what was made up, to know it again

// What is no part of a week: answers write it into the store.
bool isOurOwn(std::string_view key) {
    return key == kMadeUp || key == kActiveLightSwitch || key == kCachedSleepBank || key == kCachedSleepBankUpdate;
}

// A number for everything that `demo` made up, and so for a store that still holds just that. Another version of the
// program may count otherwise; then an old week is somebody else's, and stays.
std::int64_t fingerprint(const Dictionary& store) {
    PropertyList list;
    for (const auto& [key, value] : store) {
        if (!isOurOwn(key)) {
            list.set(key, value);
        }
    }
    const auto bytes = list.binary();
    const auto* text = std::get_if<std::string>(&bytes);
    return text != nullptr ? static_cast<std::int64_t>(std::hash<std::string>()(*text)) : 0;
}

bool isMadeUp(const Dictionary& store) {
    return store.contains(kMadeUp) && integerForKey(store, kMadeUp, 0) == fingerprint(store);
}

}  // namespace

ExitStatus makeDemo(const Device& device, bool again, const std::string& program) {
    const std::filesystem::path file = storeFile(device);
    UserDefaults::Changes changes;
    const Dictionary week = demoWeek(device);
    for (const auto& [key, value] : week) {
        changes.emplace(key, value);
    }
    changes.emplace(kMadeUp, fingerprint(week));
    const auto mayGo = [again](const Dictionary& there) { return again && isMadeUp(there); };
    switch (UserDefaults(device, kGroupSuite).create(changes, mayGo)) {
        case UserDefaults::Creation::made:
            break;
        case UserDefaults::Creation::failed:
            return ExitStatus::fault;
        case UserDefaults::Creation::wasThere:
            return complain("a store is there already and is not touched: " + file.string() +
                            (again ? "; no demo made it, or it was changed since" : "") +
                            "; name an empty folder with --preferences");
    }
    std::cout << "A made-up week that ends this morning is in " << file.string() << "\nTry: " << program
              << "ask sleep-rings time-asleep readiness\n";
    return ExitStatus::answered;
}

ExitStatus showStore(const Device& device, const std::string& key) {
    constexpr int kIndent = 2;
    const auto contents = UserDefaults(device, kGroupSuite).contents();
    if (key.empty()) {
        std::cout << jsonText(jsonFromDictionary(*contents), kIndent);
        return ExitStatus::answered;
    }
    const Value* value = valueForKey(*contents, key);
    std::cout << jsonText(value != nullptr ? jsonFromValue(*value) : Json(), kIndent);
    return ExitStatus::answered;
}

ExitStatus importStore(const Device& device, const std::string& file) {
    const auto read = bytesOfFile(file, kMaximumPropertyListBytes);
    if (const auto* unreadable = std::get_if<UnreadableFile>(&read)) {
        return complain(quotedText(file) + " cannot be read: " + unreadable->why + "; nothing was imported");
    }
    const auto& bytes = std::get<std::string>(read);
    const auto contents = dictionaryFromPropertyList(bytes);
    if (const auto* damage = std::get_if<std::string>(&contents)) {
        return complain(quotedText(file) + " " + *damage + "; nothing was imported");
    }
    if (!UserDefaults(device, kGroupSuite).merge(bytes)) {
        return ExitStatus::fault;
    }
    std::cout << "Keys taken over into " << storeFile(device).string() << ": " << std::get<Dictionary>(contents).size()
              << "\n";
    return ExitStatus::answered;
}

}  // namespace lunabrook
