// The languages that the tree has texts for: "de", "en", "pt-BR", in the order of the alphabet.

#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace lunabrook::test {

inline std::vector<std::string> shippedLanguages() {
    std::vector<std::string> languages;
    for (const auto& entry : std::filesystem::directory_iterator(LUNABROOK_RESOURCES)) {
        if (entry.path().extension() == ".lproj") {
            languages.push_back(entry.path().stem());
        }
    }
    std::sort(languages.begin(), languages.end());
    return languages;
}

inline std::filesystem::path shippedFile(const std::string& language, const char* name) {
    return std::filesystem::path(LUNABROOK_RESOURCES) / (language + ".lproj") / name;
}

// A test's name holds no hyphen: "ptBR".
inline std::string nameOfLanguage(const testing::TestParamInfo<std::string>& language) {
    std::string name = language.param;
    std::erase(name, '-');
    return name;
}

}  // namespace lunabrook::test
