#include "voice/language_sentences.h"

#include <filesystem>
#include <utility>

#include "voice/resource_file.h"

namespace lunabrook {

namespace {

constexpr const char* kEnglish = "en";

std::filesystem::path fileOf(const Device& device, const std::string& language) {
    return device.bundle().folder() / (language + ".lproj") / "Sentences.yaml";
}

void addSentences(std::vector<LanguageSentences>& languages, const Device& device, const std::string& language) {
    const std::filesystem::path file = fileOf(device, language);
    const auto bytes = resourceFile(file);
    const auto* unread = std::get_if<Damage>(&bytes);
    auto read = unread != nullptr ? *unread : sentenceFileFromText(std::get<std::string>(bytes));
    if (const auto* damage = std::get_if<Damage>(&read)) {
        device.tellFault({file, damage->line, damage->what + "; its sentences are not understood"});
    } else {
        languages.push_back({language, std::get<SentenceFile>(std::move(read))});
    }
}

}  // namespace

std::vector<LanguageSentences> languageSentences(const Device& device) {
    std::vector<LanguageSentences> languages;
    const std::string language = device.bundle().language();
    std::error_code ignored;
    if (!language.empty() && language != kEnglish && std::filesystem::exists(fileOf(device, language), ignored)) {
        addSentences(languages, device, language);
    }
    addSentences(languages, device, kEnglish);
    return languages;
}

}  // namespace lunabrook
