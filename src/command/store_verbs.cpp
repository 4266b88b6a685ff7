#include <iostream>

#include "command/demo_week.h"
#include "command/verbs.h"
#include "host/json_output.h"
#include "metrics/store_keys.h"
#include "platform/device/user_defaults.h"
#include "platform/files/private/whole_file.h"
#include "platform/files/property_list.h"

namespace lunabrook {

namespace {

std::filesystem::path storeFile(const Device& device) {
    return device.preferences() / (std::string(kGroupSuite) + ".plist");
}

ExitStatus complainOfStore(const std::filesystem::path& file) {
    return complain("a store is there already and is not touched: " + file.string() +
                    "; name an empty folder with --preferences");
}

}  // namespace

ExitStatus makeDemo(const Device& device) {
    const std::filesystem::path file = storeFile(device);
    std::error_code error;
    if (std::filesystem::exists(std::filesystem::symlink_status(file, error))) {
        return complainOfStore(file);
    }
    UserDefaults::Changes changes;
    for (auto& [key, value] : demoWeek(device)) {
        changes.emplace(key, value);
    }
    const UserDefaults::Creation creation = UserDefaults(device, kGroupSuite).create(changes);
    if (creation != UserDefaults::Creation::made) {  // another program may have been faster
        return creation == UserDefaults::Creation::wasThere ? complainOfStore(file) : ExitStatus::fault;
    }
    std::cout << "A made-up week that ends this morning is in " << file.string()
              << "\nTry: lunabrook ask sleep-rings time-asleep readiness\n";
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
    std::string bytes;
    const FileDescriptor opened(file, O_RDONLY);
    if (!opened.isOpen() || !readAll(opened, kMaximumPropertyListBytes, bytes)) {
        return complain(file + " cannot be read: " + lastErrorText() + "; nothing was imported");
    }
    const auto contents = dictionaryFromPropertyList(bytes);
    if (const auto* damage = std::get_if<std::string>(&contents)) {
        return complain(file + " " + *damage + "; nothing was imported");
    }
    if (!UserDefaults(device, kGroupSuite).merge(bytes)) {
        return ExitStatus::fault;
    }
    std::cout << "Keys taken over into " << storeFile(device).string() << ": " << std::get<Dictionary>(contents).size()
              << "\n";
    return ExitStatus::answered;
}

}  // namespace lunabrook
