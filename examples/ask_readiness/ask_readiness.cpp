// A program of one's own that answers the readiness intent.
//
//   ask_readiness ~/.local/share/lunabrook  ->  Today's Readiness is good.
//
// Everything that varies is in the device: with a TIME such as 2026-06-10T08:30:00Z the clock stands still there.

#include <chrono>
#include <iostream>
#include <optional>

#include "intents/intent_handler.h"
#include "platform/device/device.h"
#include "platform/time/iso8601.h"

using namespace lunabrook;

namespace {

Date realTime() { return std::chrono::time_point_cast<TimeInterval>(std::chrono::system_clock::now()); }

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::cerr << "usage: ask_readiness PREFERENCES [TIME]\n";
        return 2;
    }
    const std::optional<Date> stopped = argc == 3 ? dateFromIso8601String(argv[2]) : std::nullopt;
    const std::optional<Locale> locale = Locale::named("en_US");
    if ((argc == 3 && !stopped) || !locale) {
        std::cerr << "ask_readiness: the time or the locale is unknown\n";
        return 2;
    }
    const Device device({
        .clock = [stopped] { return stopped ? *stopped : realTime(); },
        .timeZone = TimeZone::system(),
        .locale = *locale,
        .preferredLanguages = {"en"},
        .bundle = LUNABROOK_BUNDLE,
        .preferences = argv[1],
        .faults = [](const Fault& fault) { std::cerr << fault.file.string() << ": " << fault.what << "\n"; },
    });
    IntentHandler extension(device);
    const ReadinessIntent intent;
    auto* handler = dynamic_cast<ReadinessIntentHandling*>(&extension.handlerForIntent(intent));
    if (handler == nullptr) {
        return 1;
    }
    IntentResponseCode code = IntentResponseCode::failure;
    handler->handleReadiness(intent, [&code](const ReadinessIntentResponse& response) {
        code = response.code();
        std::cout << response.response.value_or("") << "\n";
    });
    return code == IntentResponseCode::success ? 0 : 1;
}
