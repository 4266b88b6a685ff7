// One process among many on a store. script/stress starts it, kills it and looks at what is left.
//
//   store_worker FOLDER write COUNT NAME...  a thread for each name sets NAME.1, NAME.2 ... of fifty keys in turn to 1,
//                                            2 ... and says each number once it is written
//   store_worker FOLDER read COUNT           reads so often and on until SIGTERM; says how often
//
// Ends with 1 when a fault was told, a key went or a value went back.

#include <atomic>
#include <chrono>
#include <csignal>
#include <iostream>
#include <syncstream>
#include <thread>

#include "platform/device/user_defaults.h"

namespace lunabrook {
namespace {

constexpr int kKeys = 50;

std::atomic<bool> isDone = false;
std::atomic<bool> isWrong = false;

Device::Settings settingsOf(const char* folder) {
    return {.clock = [] { return Date(); },
            .timeZone = TimeZone::utc(),
            .locale = Locale::named("en_US").value(),
            .preferredLanguages = {},
            .bundle = {},
            .preferences = folder,
            .faults =
                [](const Fault& fault) {
                    std::cerr << fault.file.string() << " " << fault.what << "\n";
                    isWrong = true;
                }};
}

void write(const char* folder, const std::string& name, int count) {
    const Device device(settingsOf(folder));
    UserDefaults defaults(device, "group.kestrovan.Lunabrook");
    for (int number = 1; number <= count && !isWrong; ++number) {
        const std::string key = name + "." + std::to_string(number % kKeys);
        const auto before = defaults.objectForKey(key);
        const bool isThere = number <= kKeys || (before && before->integerValue() == number - kKeys);
        isWrong = isWrong || !isThere || !defaults.setObject(key, number);
        std::osyncstream(std::cout) << name << " " << number << std::endl;
    }
}

void read(const char* folder, int count) {
    const Device device(settingsOf(folder));
    const UserDefaults defaults(device, "group.kestrovan.Lunabrook");
    std::shared_ptr<const Dictionary> before = defaults.contents();
    int reads = 1;
    const int most = 1000 * count;  // should nobody be left to say that it is time
    for (; (reads < count || !isDone) && reads < most && !isWrong; ++reads) {
        const auto now = defaults.contents();
        for (const auto& [key, value] : *before) {
            const Value* newer = now == before ? &value : valueForKey(*now, key);
            isWrong = isWrong || newer == nullptr || newer->integerValue() < value.integerValue();
        }
        before = now;
        std::this_thread::sleep_for(std::chrono::microseconds(100));  // leaves the processors to the writers
    }
    std::cout << reads << "\n";
}

}  // namespace
}  // namespace lunabrook

int main(int argc, char** argv) {
    std::signal(SIGTERM, [](int) { lunabrook::isDone = true; });
    const int count = std::atoi(argv[3]);
    if (argc == 4) {
        lunabrook::read(argv[1], count);
        return lunabrook::isWrong ? 1 : 0;
    }
    std::vector<std::thread> threads;
    for (int name = 4; name < argc; ++name) {
        threads.emplace_back(lunabrook::write, argv[1], argv[name], count);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return lunabrook::isWrong ? 1 : 0;
}
