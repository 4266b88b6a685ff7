#include "host/intent_definitions.h"

#include <fstream>
#include <nlohmann/json.hpp>

namespace lunabrook {

namespace {

using nlohmann::json;

constexpr const char* kResource = "Intents.json";
constexpr const char* kTable = "Intents";

IntentDefinition definitionFromJson(const json& entry) {
    return {
        .className = entry.at("class"),
        .title = entry.at("title"),
        .description = entry.at("description"),
        .category = entry.at("category"),
        .phrases = entry.at("phrases"),
        .successTemplate = entry.at("success"),
        .failureText = entry.at("failure"),
        .responseParameters = entry.at("parameters"),
    };
}

void translate(const Bundle& bundle, std::string& text) { text = bundle.localizedString(text, kTable); }

}  // namespace

std::vector<IntentDefinition> untranslatedIntentDefinitions(const Device& device) {
    const std::filesystem::path file = device.bundle().folder() / kResource;
    std::vector<IntentDefinition> definitions;
    try {
        std::ifstream stream(file, std::ios::binary);
        for (const json& entry : json::parse(stream)) {
            definitions.push_back(definitionFromJson(entry));
        }
    } catch (const json::exception&) {
        device.tellFault({.file = file, .what = "is missing or does not define the intents"});
        return {};
    }
    return definitions;
}

std::vector<IntentDefinition> intentDefinitions(const Device& device) {
    std::vector<IntentDefinition> definitions = untranslatedIntentDefinitions(device);
    const Bundle& bundle = device.bundle();
    for (IntentDefinition& definition : definitions) {
        translate(bundle, definition.title);
        translate(bundle, definition.description);
        translate(bundle, definition.failureText);
        for (std::string& phrase : definition.phrases) {
            translate(bundle, phrase);
        }
    }
    return definitions;
}

}  // namespace lunabrook
