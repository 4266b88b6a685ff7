#include <iostream>

#include "host/intent_definitions.h"
#include "host/verbs.h"
#include "intents/intent_dispatch.h"
#include "platform/display_width.h"

namespace lunabrook {

namespace {

std::string padded(std::string text, int columns) {
    const int missing = columns - displayWidth(text);
    return text.append(missing > 0 ? static_cast<std::size_t>(missing) : 1, ' ');
}

}  // namespace

ExitStatus listIntents(const Device& device) {
    for (const IntentDefinition& definition : intentDefinitions(device)) {
        const IntentRoute* route = intentRouteNamed(definition.className);
        const std::string phrase = definition.phrases.empty() ? "" : definition.phrases.front();
        std::cout << padded(route != nullptr ? std::string(route->shortName) : definition.className, 19)
                  << padded(definition.title, 20) << "\"" << phrase << "\"\n";
    }
    return ExitStatus::answered;
}

}  // namespace lunabrook
