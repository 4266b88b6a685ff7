#include <fstream>
#include <iostream>
#include <iterator>

#include "command/demo_week.h"
#include "command/verbs.h"
#include "host/json_output.h"
#include "metrics/store_keys.h"
#include "platform/device/user_defaults.h"
#include "platform/files/property_list.h"

namespace lunabrook {

namespace {

std::filesystem::path storeFile(const Device& device) {
    return device.preferences() / (std::string(kGroupSuite) + ".plist");
}

// One byte more than may be read is enough to know that a file is too large.
std::string boundedContents(std::istream& stream) {
    std::string bytes(kMaximumPropertyListBytes + 1, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return bytes;
}

}  // namespace

ExitStatus makeDemo(const Device& device) {
    const std::filesystem::path file = storeFile(device);
    std::error_code error;
    if (std::filesystem::exists(std::filesystem::symlink_status(file, error))) {
        return complain("a store is there already and is not touched: " + file.string() +
                        "; name an empty folder with --preferences");
    }
    UserDefaults::Changes changes;
    for (auto& [key, value] : demoWeek(device)) {
        changes.emplace(key, value);
    }
    if (!UserDefaults(device, kGroupSuite).setObjects(changes)) {
        return ExitStatus::fault;
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
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes = boundedContents(stream);
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
