// A warm request on a store with one year of days against one with a hundred: the store is loaded, only the request
// counts. Writes are dropped, so that the bank's cache does not rewrite (and reload) the store.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "command/demo_week.h"
#include "metrics/group_metrics.h"
#include "metrics/store_keys.h"
#include "platform/device/user_defaults.h"
#include "platform/time/iso8601.h"

namespace lunabrook {
namespace {

Device::Settings settingsOf(const std::filesystem::path& preferences, bool dropsWrites) {
    return {.clock = [] { return dateFromIso8601String("2026-06-10T08:30:00+02:00").value(); },
            .timeZone = TimeZone::named("Europe/Berlin").value(),
            .locale = Locale::named("de_DE").value(),
            .preferredLanguages = {"en"},
            .bundle = {},
            .preferences = preferences,
            .dropsWrites = dropsWrites};
}

// The made-up week, and before it so many days of eight hours.
void makeStore(const std::filesystem::path& preferences, std::int64_t days) {
    const Device device(settingsOf(preferences, false));
    FormatTools tools(device);
    UserDefaults::Changes changes;
    for (auto& [key, value] : demoWeek(device)) {
        changes.emplace(key, value);
    }
    Dictionary bank = *changes.at(std::string(kBankDict))->dictionary();
    for (std::int64_t day = 7; day < days; ++day) {
        const Date date = dateByAddingSeconds(device.now(), -static_cast<double>(day) * kDaySeconds);
        bank.emplace(tools.YYMMDD(date).value(), 28800.0);
    }
    changes.insert_or_assign(std::string(kBankDict), Value(std::move(bank)));
    UserDefaults(device, kGroupSuite).setObjects(changes);
}

template <auto kRequest>
void warmRequest(benchmark::State& state) {
    std::string folder = std::filesystem::temp_directory_path() / "lunabrook-bench-XXXXXX";
    if (::mkdtemp(folder.data()) == nullptr) {
        state.SkipWithError("there is no folder for a store");
        return;
    }
    const std::filesystem::path preferences = folder;
    makeStore(preferences, state.range(0));
    const Device device(settingsOf(preferences, true));
    GroupMetrics metrics(device);
    if (!(metrics.*kRequest)()) {  // it loads the store, too
        state.SkipWithError("there is no store to ask");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize((metrics.*kRequest)());
    }
    std::filesystem::remove_all(preferences);
}

constexpr std::int64_t kYear = 365;
constexpr std::int64_t kHundredYears = 36524;

BENCHMARK(warmRequest<&GroupMetrics::requestReadiness>)->Name("readiness/days")->Arg(kYear)->Arg(kHundredYears);
BENCHMARK(warmRequest<&GroupMetrics::requestSleepBank>)->Name("sleep_bank/days")->Arg(kYear)->Arg(kHundredYears);
BENCHMARK(warmRequest<&GroupMetrics::requestSpO2>)->Name("blood_oxygen/days")->Arg(kYear)->Arg(kHundredYears);

}  // namespace
}  // namespace lunabrook

BENCHMARK_MAIN();
