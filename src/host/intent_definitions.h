// The definitions of the nine intents: what people see and say. A resource of the bundle, <bundle>/Intents.json, whose
// texts are translated by the table Intents.strings of the preferred language.

#pragma once

#include <string>
#include <vector>

#include "platform/device.h"

namespace lunabrook {

struct IntentDefinition {
    std::string className;                        // "ReadinessIntent"
    std::string title;                            // "Readiness"
    std::string description;                      // one sentence
    std::string category;                         // "information" or "set"; not translated
    std::vector<std::string> phrases;             // what a person says for it; the first one is the best known
    std::string successTemplate;                  // "${response}"
    std::string failureText;                      // spoken with response code 5
    std::vector<std::string> responseParameters;  // "response", "dictionary"
};

// In the device's language. Empty, with a fault told, when the resource is missing or damaged.
std::vector<IntentDefinition> intentDefinitions(const Device& device);

// The same in the resource's own language, English.
std::vector<IntentDefinition> untranslatedIntentDefinitions(const Device& device);

}  // namespace lunabrook
