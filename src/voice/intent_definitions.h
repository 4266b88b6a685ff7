// The definitions of the nine intents: what people see of them. A resource of the bundle, <bundle>/Intents.json, whose
// texts are translated by the table Intents.strings of the preferred language; what people say is in Sentences.yaml.

#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/device/device.h"

namespace lunabrook {

struct IntentDefinition {
    struct Outcome {
        int code = 0;
        std::string text;
    };

    std::string className;                          // "ReadinessIntent"; always one of the nine
    std::string title;                              // "Readiness"
    std::string description;                        // one sentence
    std::string category;                           // "information" or "set"; not translated
    std::vector<std::string> phrases;               // natural examples; the first one is the best known
    Outcome success;                                // "${response}": what the response itself says
    Outcome failure;                                // a sentence of its own
    std::map<std::string, std::string> parameters;  // of the response: "dictionary" -> "string"
};

// All nine, in the device's language. Empty, with a fault told, when the resource is missing or damaged: one definition
// that is wrong or left out damages the whole.
std::vector<IntentDefinition> intentDefinitions(const Device& device);
// The one of the class; nil when there are none.
std::optional<IntentDefinition> intentDefinition(const Device& device, std::string_view className);

}  // namespace lunabrook
