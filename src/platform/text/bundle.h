// The localised texts of a bundle: <folder>/<language>.lproj/<table>.strings.
//
// The first preferred language that the bundle has is the only one asked; a key that its table lacks gives the key
// itself, an empty text stays empty. A table is read when the first text of it is asked for. Used from one thread.

#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files/fault.h"

namespace lunabrook {

using StringTable = std::map<std::string, std::string, std::less<>>;

class Bundle {
public:
    // `preferredLanguages` are BCP 47 tags, most wanted first. A folder that is not there is a bundle without
    // languages.
    Bundle(std::filesystem::path folder, std::vector<std::string> preferredLanguages, FaultListener faults);

    std::string localizedString(std::string_view key, std::string_view table = "Localizable") const;

    // Null when the chosen language has no such table, or a damaged one.
    const StringTable* table(std::string_view name) const;

    // The chosen one, "de" or "pt-BR"; empty when the bundle has no preferred language.
    std::string language() const;

    // Every language that the bundle has, as tags in alphabetical order: "de", "pt-BR".
    std::vector<std::string> languages() const;

    // Whether the tables that were read still stand as they were read.
    bool isCurrent() const;

    const std::filesystem::path& folder() const { return folder_; }

private:
    const std::optional<std::filesystem::path>& chosenLanguage() const;
    std::filesystem::path fileOf(std::string_view table) const;

    std::filesystem::path folder_;
    std::vector<std::string> preferredLanguages_;
    FaultListener faults_;
    mutable bool languageIsChosen_ = false;
    mutable std::optional<std::filesystem::path> language_;
    struct Loaded;
    mutable std::map<std::string, std::shared_ptr<const Loaded>, std::less<>> tables_;
};

}  // namespace lunabrook
