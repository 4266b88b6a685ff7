#include "voice/intent_definitions.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <string_view>
#include <variant>

#include "intents/intent_dispatch.h"

namespace lunabrook {

namespace {

using nlohmann::json;

constexpr const char* kResource = "Intents.json";
constexpr const char* kTable = "Intents";
constexpr const char* kLanguage = "en";  // of the resource
constexpr std::uintmax_t kMaximumBytes = std::uintmax_t{1} << 20;

struct Damage {
    int line = 0;
    std::string what;
};

IntentDefinition::Outcome outcomeFromJson(const json& entry) { return {entry.at("code"), entry.at("text")}; }

IntentDefinition definitionFromJson(const json& entry) {
    return {
        .className = entry.at("class"),
        .title = entry.at("title"),
        .description = entry.at("description"),
        .category = entry.at("category"),
        .phrases = entry.at("phrases"),
        .success = outcomeFromJson(entry.at("success")),
        .failure = outcomeFromJson(entry.at("failure")),
        .parameters = entry.at("parameters"),
    };
}

std::variant<IntentVocabulary, Damage> vocabularyFromJson(const json& root) {
    IntentVocabulary vocabulary{
        .language = kLanguage,
        .filler = root.at("filler"),
        .contractions = root.at("contractions"),
        .intents = {},
    };
    std::set<std::string_view> missing;
    for (const IntentRoute& route : intentRoutes()) {
        missing.insert(route.className);
    }
    for (const json& entry : root.at("intents").get<json::array_t>()) {
        vocabulary.intents.push_back(definitionFromJson(entry));
        const std::string& name = vocabulary.intents.back().className;
        if (missing.erase(name) == 0) {
            return Damage{0, "defines \"" + name + "\", which is no intent or defined already"};
        }
    }
    if (!missing.empty()) {
        return Damage{0, "does not define \"" + std::string(*missing.begin()) + "\""};
    }
    return vocabulary;
}

std::variant<IntentVocabulary, Damage> vocabularyFromText(const std::string& text) {
    try {
        return vocabularyFromJson(json::parse(text));
    } catch (const json::parse_error& error) {
        const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(error.byte, text.size()));
        return Damage{1 + static_cast<int>(std::count(text.begin(), end, '\n')), "is not JSON"};
    } catch (const json::exception&) {
        return Damage{0, "does not define the intents: something is left out or of the wrong type"};
    }
}

std::variant<IntentVocabulary, Damage> loadVocabulary(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error) || std::filesystem::file_size(file, error) > kMaximumBytes) {
        return Damage{0, "is missing or too large"};
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream.is_open()) {
        return Damage{0, "cannot be read"};
    }
    return vocabularyFromText({std::istreambuf_iterator<char>(stream), {}});
}

}  // namespace

IntentVocabulary englishVocabulary(const Device& device) {
    const std::filesystem::path file = device.bundle().folder() / kResource;
    auto loaded = loadVocabulary(file);
    if (const auto* damage = std::get_if<Damage>(&loaded)) {
        device.tellFault({file, damage->line, damage->what + "; no phrase is understood"});
        return {};
    }
    return std::get<IntentVocabulary>(std::move(loaded));
}

IntentVocabulary translatedVocabulary(const Device& device, IntentVocabulary english) {
    const Bundle& bundle = device.bundle();
    const auto translate = [&bundle](std::string& text) { text = bundle.localizedString(text, kTable); };
    if (bundle.table(kTable) != nullptr) {
        english.language = bundle.language();
    }
    translate(english.filler);
    translate(english.contractions);
    for (IntentDefinition& intent : english.intents) {
        translate(intent.title);
        translate(intent.description);
        translate(intent.failure.text);
        std::for_each(intent.phrases.begin(), intent.phrases.end(), translate);
    }
    return english;
}

std::vector<IntentDefinition> intentDefinitions(const Device& device) {
    return translatedVocabulary(device, englishVocabulary(device)).intents;
}

}  // namespace lunabrook
