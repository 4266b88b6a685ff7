// A device whose clock, zone, locale, languages, bundle and store a test pins, and the faults it was told.
//
//   TestDevice device{{.now = "2026-06-10T08:30:00+02:00", .locale = "de_DE"}};
//   device.store({{"readyStars", true}});

#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/device/device.h"
#include "platform/values/value.h"

namespace lunabrook::test {

// A folder of its own, gone with the object.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

// A date from ISO 8601 text; fails the program when the text is none.
Date date(const std::string& iso8601);

void writeFile(const std::filesystem::path& file, const std::string& bytes);
std::string readFile(const std::filesystem::path& file);

class TestDevice {
public:
    struct Options {
        std::string now = "2026-06-10T08:30:00+02:00";
        std::string timeZone = "Europe/Berlin";
        std::string locale = "en_US";
        std::vector<std::string> languages = {"en"};
        std::vector<std::pair<std::string, std::string>> translations = {};  // of the first language, into its table
        bool dropsWrites = false;
    };

    TestDevice();
    explicit TestDevice(Options options);

    operator const Device&() const { return *device_; }
    const Device* operator->() const { return device_.get(); }

    void setNow(const std::string& iso8601);
    void setNow(Date now) { now_ = now; }

    // Puts keys into the shared store as the containing application would.
    void store(const Dictionary& keys);
    // Everything that the shared store holds now.
    Dictionary stored() const;

    const std::filesystem::path& folder() const { return folder_.path(); }
    std::filesystem::path storeFile() const;
    const std::vector<Fault>& faults() const { return faults_; }

private:
    TemporaryFolder folder_;
    Date now_;
    std::vector<Fault> faults_;
    std::unique_ptr<Device> device_;
};

}  // namespace lunabrook::test
