#include "intents/intent_dispatch.h"

#include <algorithm>
#include <type_traits>

#include "intents/intent_handler.h"
#include "platform/text/near_names.h"

namespace lunabrook {

namespace {

template <class Response>
IntentReply replyFrom(const Response& response) {
    IntentReply reply{.code = response.code(), .response = response.response, .dictionary = std::nullopt};
    if constexpr (requires { response.dictionary; }) {
        reply.dictionary = response.dictionary;
    }
    return reply;
}

// `operation` is the one that `Handling` requires for `Intent`.
template <class Handling, class Intent, class Response>
IntentReply askThrough(INExtension& extension,
                       void (Handling::*operation)(const Intent&, const Completion<Response>&)) {
    // Another extension may lack it, which is a failure of each call; ours would never answer.
    static_assert(std::is_base_of_v<Handling, IntentHandler>, "IntentHandler lacks the protocol of a route");
    const Intent intent;
    IntentReply reply;
    if (auto* handler = dynamic_cast<Handling*>(&extension.handlerForIntent(intent))) {
        (handler->*operation)(intent, [&reply](const Response& response) { reply = replyFrom(response); });
    }
    return reply;
}

template <auto kOperation>
IntentReply ask(INExtension& extension) {
    return askThrough(extension, kOperation);
}

constexpr IntentRoute kRoutes[] = {
    {"LightsOffIntent", "lights-off", ask<&LightsOffIntentHandling::handleLightsOff>},
    {"TimeAsleepIntent", "time-asleep", ask<&TimeAsleepIntentHandling::handleTimeAsleep>},
    {"ReadinessIntent", "readiness", ask<&ReadinessIntentHandling::handleReadiness>},
    {"SleepFuelIntent", "sleep-fuel", ask<&SleepFuelIntentHandling::handleSleepFuel>},
    {"SleepSpO2Intent", "blood-oxygen", ask<&SleepSpO2IntentHandling::handleSleepSpO2>},
    {"RespirationIntent", "respiration", ask<&RespirationIntentHandling::handleRespiration>},
    {"LatestBedtimeIntent", "latest-bedtime", ask<&LatestBedtimeIntentHandling::handleLatestBedtime>},
    {"SleepRingsIntent", "sleep-rings", ask<&SleepRingsIntentHandling::handleSleepRings>},
    {"WristTempIntent", "wrist-temperature", ask<&WristTempIntentHandling::handleWristTemp>},
};

}  // namespace

std::span<const IntentRoute> intentRoutes() { return kRoutes; }

const IntentRoute* intentRouteNamed(std::string_view name) {
    const std::string key = nameKey(name);  // a title's is the short name
    const auto* route = std::find_if(std::begin(kRoutes), std::end(kRoutes), [&key](const IntentRoute& candidate) {
        return key == candidate.shortName || key == nameKey(candidate.className);
    });
    return route == std::end(kRoutes) ? nullptr : route;
}

}  // namespace lunabrook
