// Everything that differs from device to device: clock, zone, locale, languages, texts, store.
//
// Made once by the host (or a test) and passed by reference down the tree of owners, which it outlives. Nothing below
// the host reads an environment variable, the process locale or the real clock, so an answer is a pure function of
// (store, device).

#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files/fault.h"
#include "platform/text/bundle.h"
#include "platform/text/locale.h"
#include "platform/time/time_zone.h"
#include "platform/values/date.h"

namespace lunabrook {

class SuiteFile;

class Device {
public:
    struct Settings {
        std::function<Date()> clock;
        TimeZone timeZone;
        Locale locale;
        std::vector<std::string> preferredLanguages;  // BCP 47 tags, most wanted first; may be empty
        std::filesystem::path bundle;
        std::filesystem::path preferences;
        bool dropsWrites = false;  // a question: the store's bytes stay as they are
        FaultListener faults = [](const Fault&) {};
    };

    explicit Device(Settings settings);
    ~Device();
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    Date now() const { return settings_.clock(); }
    const TimeZone& timeZone() const { return settings_.timeZone; }
    const Locale& locale() const { return settings_.locale; }
    const std::vector<std::string>& preferredLanguages() const { return settings_.preferredLanguages; }
    const std::filesystem::path& preferences() const { return settings_.preferences; }
    const Bundle& bundle() const { return bundle_; }

    // The bundle's text for an English fragment; the fragment itself when there is no translation.
    std::string localizedString(std::string_view key) const { return bundle_.localizedString(key); }

    void tellFault(const Fault& fault) const { settings_.faults(fault); }

    // The one loaded file behind every handle on a suite; for UserDefaults.
    std::shared_ptr<SuiteFile> suiteFile(std::string_view suite) const;

private:
    Settings settings_;
    Bundle bundle_;
    mutable std::map<std::string, std::shared_ptr<SuiteFile>, std::less<>> suiteFiles_;
};

}  // namespace lunabrook
