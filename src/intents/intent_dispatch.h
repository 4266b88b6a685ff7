// The routing of an intent that is known by name: "ReadinessIntent" -> its handler's own operation -> a reply.
//
// This is the operating system's part: it makes the intent, asks the extension for a handler and calls the operation of
// the intent's protocol.

#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "intents/intent_responses.h"
#include "platform/device/intents.h"

namespace lunabrook {

struct IntentReply {
    IntentResponseCode code = IntentResponseCode::failure;
    std::optional<std::string> response;
    std::optional<std::string> dictionary;  // always nil for lights off
};

struct IntentRoute {
    std::string_view className;  // "ReadinessIntent"
    std::string_view shortName;  // "readiness"
    // A handler that lacks the intent's protocol is a failure.
    IntentReply (*ask)(INExtension& extension);
};

// All nine, lights off first.
std::span<const IntentRoute> intentRoutes();

// By class or short name or title, capitals apart ("Blood oxygen"); null when there is none.
const IntentRoute* intentRouteNamed(std::string_view name);

}  // namespace lunabrook
