// The definitions of the nine intents: what people see and say. A resource of the bundle, <bundle>/Intents.json, whose
// texts are translated by the table Intents.strings of the preferred language.

#pragma once

#include <map>
#include <string>
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
    std::vector<std::string> phrases;               // what a person says for it; the first one is the best known
    Outcome success;                                // "${response}": what the response itself says
    Outcome failure;                                // a sentence of its own
    std::map<std::string, std::string> parameters;  // of the response: "dictionary" -> "string"
};

// What people say in one language.
struct IntentVocabulary {
    std::string language;      // "en", "pt-BR"
    std::string filler;        // words of politeness: "please, could you"
    std::string contractions;  // "what's = what is, I'm = I am"
    std::vector<IntentDefinition> intents;
};

// In the resource's own language, English; all nine. Empty, with a fault told, when the resource is missing or damaged:
// one definition that is wrong or left out damages the whole.
IntentVocabulary englishVocabulary(const Device& device);

// In the device's language.
IntentVocabulary translatedVocabulary(const Device& device, IntentVocabulary english);
std::vector<IntentDefinition> intentDefinitions(const Device& device);

}  // namespace lunabrook
