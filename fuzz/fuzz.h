// What the targets share: a promise that is looked at, a random device, a folder for files.

#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "platform/device/device.h"

namespace lunabrook::fuzz {

inline void require(bool isTrue, std::string_view promise) {
    if (!isTrue) {
        std::cerr << "broken: " << promise << "\n";
        std::abort();
    }
}

// In memory where that is possible; of this process, and gone with it unless a promise was broken.
inline const std::filesystem::path& folder() {
    struct Folder {
        Folder() : path(std::filesystem::exists("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path()) {
            path /= "lunabrook-fuzz-" + std::filesystem::read_symlink("/proc/self").string();
            std::filesystem::create_directories(path);
        }
        ~Folder() { std::filesystem::remove_all(path); }
        std::filesystem::path path;
    };
    static const Folder made;
    return made.path;
}

inline void writeFile(const std::filesystem::path& file, std::string_view bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// Locales are kept: loading their data is slow, and copies share it.
inline const Locale& anyLocale(FuzzedDataProvider& input) {
    static const std::vector<Locale> locales = [] {
        std::vector<Locale> named;
        for (const char* name :
             {"en_US", "de_DE", "ar_EG", "th_TH", "fa_IR", "ja_JP@calendar=japanese", "hi_IN", "ko_KR", "es_ES",
              "zh_Hant_TW", "he_IL@calendar=hebrew", "my_MM", "en_US_POSIX", "bg_BG", "am_ET"}) {
            named.push_back(Locale::named(name).value());
        }
        return named;
    }();
    return locales[input.ConsumeIntegralInRange<std::size_t>(0, locales.size() - 1)];
}

// A zone of the system, or one of random data where those are a zone at all.
inline TimeZone anyZone(FuzzedDataProvider& input) {
    constexpr std::array kNames = {"UTC",
                                   "Europe/Berlin",
                                   "America/New_York",
                                   "Asia/Tokyo",
                                   "Pacific/Apia",
                                   "Asia/Kathmandu",
                                   "Africa/Casablanca",
                                   "Australia/Lord_Howe",
                                   "Antarctica/Troll",
                                   "America/Sao_Paulo",
                                   "Pacific/Kiritimati"};
    const auto choice = input.ConsumeIntegralInRange<std::size_t>(0, kNames.size());
    if (choice < kNames.size()) {
        return TimeZone::named(kNames.at(choice)).value();
    }
    const std::filesystem::path file = folder() / "zone";
    writeFile(file, input.ConsumeRandomLengthString());
    return TimeZone::named(file.string()).value_or(TimeZone::utc());
}

// Mostly of our days, else any double at all.
inline Date anyDate(FuzzedDataProvider& input) {
    constexpr double kMorning = 1781073000;  // 2026-06-10T08:30+02:00
    constexpr double kYears = 1e9;
    const bool isOfOurDays = input.ConsumeProbability<float>() < 0.8F;
    return dateFromSecondsSince1970(isOfOurDays
                                        ? input.ConsumeFloatingPointInRange(kMorning - kYears, kMorning + kYears)
                                        : input.ConsumeFloatingPoint<double>());
}

}  // namespace lunabrook::fuzz

// `test` is what a target does with its bytes.
#define LUNABROOK_FUZZ_TARGET(test)                                                     \
    extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);  \
    extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) { \
        test(std::string_view(reinterpret_cast<const char*>(data), size));              \
        return 0;                                                                       \
    }
