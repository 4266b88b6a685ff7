#include "platform/text/bundle.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "platform/files/file_bytes.h"
#include "platform/files/private/file_descriptor.h"
#include "platform/text/private/language_match.h"
#include "platform/text/string_table.h"

namespace lunabrook {

namespace {

constexpr std::size_t kMaximumTableBytes = std::size_t{64} << 20;
constexpr const char* kLanguageExtension = ".lproj";

// Languages come from the environment too: one that is no tag must not lead out of the folder.
bool isTag(std::string_view language) {
    return !language.empty() && std::all_of(language.begin(), language.end(), [](unsigned char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
               (letter >= '0' && letter <= '9') || letter == '-' || letter == '_';
    });
}

std::optional<std::filesystem::path> exactLanguage(const std::filesystem::path& folder, std::string language) {
    for (const char separator : {'-', '_'}) {
        std::replace_if(
            language.begin(), language.end(), [](char c) { return c == '-' || c == '_'; }, separator);
        std::error_code ignored;
        std::filesystem::path path = folder / (language + kLanguageExtension);
        if (std::filesystem::is_directory(path, ignored)) {
            return path;
        }
    }
    return std::nullopt;
}

std::vector<std::string> languagesIn(const std::filesystem::path& folder) {
    std::vector<std::string> languages;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string language = entry->path().stem().string();
        std::error_code ignored;
        if (entry->path().extension() == kLanguageExtension && isTag(language) && entry->is_directory(ignored)) {
            languages.push_back(language);
        }
    }
    std::sort(languages.begin(), languages.end());
    return languages;
}

std::optional<std::filesystem::path> findLanguage(const std::filesystem::path& folder,
                                                  std::vector<std::string> preferred) {
    std::erase_if(preferred, [](const std::string& language) { return !isTag(language); });
    if (preferred.empty()) {
        return std::nullopt;
    }
    if (auto exact = exactLanguage(folder, preferred.front())) {
        return exact;
    }
    const std::vector<std::string> languages = languagesIn(folder);
    const auto language = bestLanguage(languages, preferred);
    return language ? std::optional(folder / (*language + kLanguageExtension)) : std::nullopt;
}

// Nil when the file cannot be read, or is too large to be a table.
std::optional<std::string> bytesOf(const std::filesystem::path& file) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(file, ignored)) {
        return std::nullopt;
    }
    auto read = bytesOfFile(file, kMaximumTableBytes);
    auto* bytes = std::get_if<std::string>(&read);
    return bytes != nullptr && bytes->size() <= kMaximumTableBytes ? std::optional(std::move(*bytes)) : std::nullopt;
}

std::optional<StringTable> loadTable(const std::filesystem::path& file, const FaultListener& faults) {
    std::error_code ignored;
    if (std::filesystem::status(file, ignored).type() == std::filesystem::file_type::not_found) {
        return std::nullopt;
    }
    const auto bytes = bytesOf(file);
    if (!bytes) {
        faults({file, 0, "cannot be read; its texts are not used"});
        return std::nullopt;
    }
    auto table = stringTableFromBytes(*bytes);
    if (const auto* error = std::get_if<SyntaxError>(&table)) {
        faults({file, error->line, error->what + "; its texts are not used"});
        return std::nullopt;
    }
    return std::get<StringTable>(std::move(table));
}

}  // namespace

struct Bundle::Loaded {
    std::optional<FileIdentity> identity;
    std::optional<StringTable> table;
};

Bundle::Bundle(std::filesystem::path folder, std::vector<std::string> preferredLanguages, FaultListener faults)
    : folder_(std::move(folder)), preferredLanguages_(std::move(preferredLanguages)), faults_(std::move(faults)) {}

const std::optional<std::filesystem::path>& Bundle::chosenLanguage() const {
    if (!languageIsChosen_) {
        languageIsChosen_ = true;
        language_ = findLanguage(folder_, preferredLanguages_);
    }
    return language_;
}

std::string Bundle::language() const { return chosenLanguage() ? chosenLanguage()->stem().string() : std::string(); }

std::vector<std::string> Bundle::languages() const {
    std::vector<std::string> tags = languagesIn(folder_);
    for (std::string& tag : tags) {
        std::replace(tag.begin(), tag.end(), '_', '-');
    }
    return tags;
}

const StringTable* Bundle::table(std::string_view name) const {
    auto known = tables_.find(name);
    if (known == tables_.end()) {
        auto loaded = std::make_shared<Loaded>();
        if (chosenLanguage()) {
            loaded->identity = identityOf(fileOf(name));
            loaded->table = loadTable(fileOf(name), faults_);
        }
        known = tables_.emplace(name, std::move(loaded)).first;
    }
    return known->second->table ? &*known->second->table : nullptr;
}

bool Bundle::isCurrent() const {
    return !language_ || std::all_of(tables_.begin(), tables_.end(), [this](const auto& known) {
        return known.second->identity == identityOf(fileOf(known.first));
    });
}

std::filesystem::path Bundle::fileOf(std::string_view table) const {
    return *chosenLanguage() / (std::string(table) + ".strings");
}

std::string Bundle::localizedString(std::string_view key, std::string_view table) const {
    const StringTable* texts = this->table(table);
    const auto found = texts != nullptr ? texts->find(key) : StringTable::const_iterator();
    return texts != nullptr && found != texts->end() ? found->second : std::string(key);
}

}  // namespace lunabrook
