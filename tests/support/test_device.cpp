#include "support/test_device.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>

#include "platform/device/user_defaults.h"
#include "platform/text/text_case.h"
#include "platform/time/iso8601.h"

namespace lunabrook::test {

namespace {

constexpr const char* kGroupSuiteName = "group.kestrovan.Lunabrook";

template <class Content>
Content required(std::optional<Content> content, const std::string& what) {
    if (!content) {
        std::cerr << "test device: no such " << what << "\n";
        std::abort();
    }
    return *std::move(content);
}

std::string quoted(const std::string& text) {
    return "\"" + stringByReplacing(stringByReplacing(text, "\\", "\\\\"), "\"", "\\\"") + "\"";
}

std::filesystem::path bundleWith(const std::filesystem::path& folder, const TestDevice::Options& options) {
    std::string table;
    for (const auto& [key, text] : options.translations) {
        table += quoted(key) + " = " + quoted(text) + ";\n";
    }
    const std::filesystem::path bundle = folder / "bundle";
    const std::string language = options.languages.empty() ? "en" : options.languages.front();
    writeFile(bundle / (language + ".lproj") / "Localizable.strings", table);
    return bundle;
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "lunabrook-test-XXXXXX").string();
    path_ = required(std::optional<std::filesystem::path>(mkdtemp(pattern.data())), "temporary folder");
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

Date date(const std::string& iso8601) { return required(dateFromIso8601String(iso8601), "date: " + iso8601); }

void writeFile(const std::filesystem::path& file, const std::string& bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
}

std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TestDevice::TestDevice() : TestDevice(Options{}) {}

TestDevice::TestDevice(Options options) : now_(date(options.now)) {
    device_ = std::make_unique<Device>(Device::Settings{
        .clock = [this] { return now_; },
        .timeZone = required(TimeZone::named(options.timeZone), "zone: " + options.timeZone),
        .locale = required(Locale::named(options.locale), "locale: " + options.locale),
        .preferredLanguages = options.languages,
        .bundle = bundleWith(folder_.path(), options),
        .preferences = folder_.path() / "preferences",
        .dropsWrites = options.dropsWrites,
        .faults = [this](const Fault& fault) { faults_.push_back(fault); },
    });
}

void TestDevice::setNow(const std::string& iso8601) { now_ = date(iso8601); }

void TestDevice::store(const Dictionary& keys) {
    UserDefaults::Changes changes;
    for (const auto& [key, value] : keys) {
        changes.emplace(key, value);
    }
    UserDefaults(*device_, kGroupSuiteName).setObjects(changes);
}

Dictionary TestDevice::stored() const { return *UserDefaults(*device_, kGroupSuiteName).contents(); }

std::filesystem::path TestDevice::storeFile() const {
    return device_->preferences() / (std::string(kGroupSuiteName) + ".plist");
}

}  // namespace lunabrook::test
