#include "voice/intent_definitions.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <string_view>
#include <utility>
#include <variant>

#include "intents/intent_dispatch.h"
#include "voice/language_sentences.h"
#include "voice/natural_example.h"
#include "voice/resource_file.h"

namespace lunabrook {

namespace {

using nlohmann::json;

constexpr const char* kResource = "Intents.json";
constexpr const char* kTable = "Intents";
using Definitions = std::vector<IntentDefinition>;

IntentDefinition::Outcome outcomeFromJson(const json& entry) { return {entry.at("code"), entry.at("text")}; }

IntentDefinition definitionFromJson(const json& entry) {
    return {
        .className = entry.at("class"),
        .title = entry.at("title"),
        .description = entry.at("description"),
        .category = entry.at("category"),
        .phrases = {},
        .success = outcomeFromJson(entry.at("success")),
        .failure = outcomeFromJson(entry.at("failure")),
        .parameters = entry.at("parameters"),
    };
}

std::variant<Definitions, Damage> definitionsFromJson(const json& root) {
    Definitions definitions;
    std::set<std::string_view> missing;
    for (const IntentRoute& route : intentRoutes()) {
        missing.insert(route.className);
    }
    for (const json& entry : root.at("intents").get_ref<const json::array_t&>()) {
        definitions.push_back(definitionFromJson(entry));
        const std::string& name = definitions.back().className;
        if (missing.erase(name) == 0) {
            return Damage{0, "defines \"" + name + "\", which is no intent or defined already"};
        }
    }
    if (!missing.empty()) {
        return Damage{0, "does not define \"" + std::string(*missing.begin()) + "\""};
    }
    return definitions;
}

std::variant<Definitions, Damage> definitionsFromText(const std::string& text) {
    constexpr int kDeepest = 16;
    bool isTooDeep = false;  // to be copied with a stack that ends
    const auto watchDepth = [&isTooDeep](int depth, json::parse_event_t, const json&) {
        isTooDeep = isTooDeep || depth > kDeepest;
        return !isTooDeep;
    };
    try {
        const json root = json::parse(text, watchDepth);
        return definitionsFromJson(isTooDeep ? json() : root);
    } catch (const json::parse_error& error) {
        const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(error.byte, text.size()));
        return Damage{1 + static_cast<int>(std::count(text.begin(), end, '\n')), "is not JSON"};
    } catch (const json::exception&) {
        return Damage{0, "does not define the intents: something is left out or of the wrong type"};
    }
}

// In the resource's own language, English; all nine. Empty, with a fault told, when the resource is missing or damaged.
Definitions englishDefinitions(const Device& device) {
    const std::filesystem::path file = device.bundle().folder() / kResource;
    const auto bytes = resourceFile(file);
    const auto* unread = std::get_if<Damage>(&bytes);
    auto read = unread != nullptr ? *unread : definitionsFromText(std::get<std::string>(bytes));
    if (const auto* damage = std::get_if<Damage>(&read)) {
        device.tellFault({file, damage->line, damage->what + "; no intent is described"});
        return {};
    }
    return std::get<Definitions>(std::move(read));
}

}  // namespace

Definitions intentDefinitions(const Device& device) {
    Definitions definitions = englishDefinitions(device);
    const std::vector<LanguageSentences> languages = languageSentences(device);
    const auto translate = [&device](std::string& text) { text = device.bundle().localizedString(text, kTable); };
    for (IntentDefinition& intent : definitions) {
        translate(intent.title);
        translate(intent.description);
        translate(intent.failure.text);
        for (const LanguageSentences& sentences : languages) {
            if (intent.phrases.empty()) {
                intent.phrases = naturalExamples(sentences.file, intent.className);
            }
        }
    }
    return definitions;
}

std::optional<IntentDefinition> intentDefinition(const Device& device, std::string_view className) {
    for (IntentDefinition& definition : intentDefinitions(device)) {
        if (definition.className == className) {
            return std::move(definition);
        }
    }
    return std::nullopt;
}

}  // namespace lunabrook
