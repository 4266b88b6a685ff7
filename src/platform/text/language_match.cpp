#include "platform/text/private/language_match.h"

#include <unicode/localematcher.h>
#include <unicode/ures.h>

#include <algorithm>
#include <memory>

#include "platform/text/private/icu.h"

namespace lunabrook {

namespace {

icu::Locale localeOf(const std::string& language) { return icu::Locale(language.c_str()); }

std::string likelyScript(icu::Locale locale) {
    UErrorCode status = U_ZERO_ERROR;
    locale.addLikelySubtags(status);
    return locale.getScript();
}

// The cheap answer for "de-DE" where the bundle has "de" and no other German in the same script.
std::optional<std::string> onlyFormOfLanguage(const std::vector<std::string>& languages, const std::string& wanted) {
    const icu::Locale locale = localeOf(wanted);
    const std::string language = locale.getLanguage();
    const auto forms = std::count_if(languages.begin(), languages.end(), [&](const std::string& candidate) {
        return language == localeOf(candidate).getLanguage();
    });
    const bool isOnlyForm = forms == 1 && std::binary_search(languages.begin(), languages.end(), language) &&
                            likelyScript(locale) == likelyScript(localeOf(language));
    return isOnlyForm ? std::optional(language) : std::nullopt;
}

std::optional<std::string> bestMatch(const std::vector<std::string>& languages,
                                     const std::vector<std::string>& preferred) {
    UErrorCode status = U_ZERO_ERROR;
    std::vector<icu::Locale> wanted;
    std::transform(preferred.begin(), preferred.end(), std::back_inserter(wanted), localeOf);
    icu::LocaleMatcher::Builder builder;
    for (const std::string& language : languages) {
        builder.addSupportedLocale(localeOf(language));
    }
    builder.setNoDefaultLocale();  // a language that the bundle lacks has no table
    const icu::LocaleMatcher matcher = builder.build(status);
    icu::Locale::RangeIterator<std::vector<icu::Locale>::const_iterator> iterator(wanted.cbegin(), wanted.cend());
    const icu::LocaleMatcher::Result result = matcher.getBestMatchResult(iterator, status);
    const int32_t index = succeeded(status) ? result.getSupportedIndex() : -1;
    return index >= 0 ? std::optional(languages[static_cast<std::size_t>(index)]) : std::nullopt;
}

using Resource = std::unique_ptr<UResourceBundle, decltype(&ures_close)>;

Resource child(const Resource& parent, const char* key, UErrorCode& status) {
    return {ures_getByKey(parent.get(), key, nullptr, &status), &ures_close};
}

// The language subtag of a row's entry: "zh" of "zh_Hant".
std::string languageAt(UResourceBundle* row, int32_t index, UErrorCode& status) {
    int32_t length = 0;
    const UChar* text = ures_getStringByIndex(row, index, &length, &status);
    const std::string entry = succeeded(status) ? std::string(text, text + length) : std::string();
    return entry.substr(0, entry.find('_'));
}

// Whether another name is in use for the language: "iw" is "he" now.
bool isAlias(const std::string& language) {
    UErrorCode status = U_ZERO_ERROR;
    const Resource metadata(ures_openDirect(nullptr, "metadata", &status), &ures_close);
    const Resource aliases = child(child(metadata, "alias", status), "language", status);
    if (!succeeded(status)) {
        return true;
    }
    child(aliases, language.c_str(), status);
    return succeeded(status);
}

// Whether the matcher could find any of `supported` near a language that is not among them: locale data list the pairs
// that understand each other, about four hundred. When in doubt, yes.
bool mayHaveRelatives(const std::string& language, const std::vector<std::string>& supported) {
    UErrorCode status = U_ZERO_ERROR;
    const Resource data(ures_openDirect(nullptr, "supplementalData", &status), &ures_close);
    const Resource pairs = child(child(data, "languageMatchingNew", status), "written", status);
    const auto has = [&supported](const std::string& name) {
        return std::any_of(supported.begin(), supported.end(),
                           [&name](const std::string& tag) { return name == localeOf(tag).getLanguage(); });
    };
    Resource row(nullptr, &ures_close);
    for (int32_t i = 0; succeeded(status) && i < ures_getSize(pairs.get()); ++i) {
        row.reset(ures_getByIndex(pairs.get(), i, row.release(), &status));
        const std::string first = languageAt(row.get(), 0, status);
        const std::string second = languageAt(row.get(), 1, status);
        if ((first == language && has(second)) || (second == language && has(first))) {
            return true;
        }
    }
    return !succeeded(status) || isAlias(language);
}

bool mayMatch(const std::string& wanted, const std::vector<std::string>& languages) {
    const std::string language = localeOf(wanted).getLanguage();
    return std::any_of(languages.begin(), languages.end(),
                       [&](const std::string& candidate) { return language == localeOf(candidate).getLanguage(); }) ||
           mayHaveRelatives(language, languages);
}

}  // namespace

std::optional<std::string> bestLanguage(const std::vector<std::string>& languages,
                                        const std::vector<std::string>& preferred) {
    if (languages.empty() || preferred.empty()) {
        return std::nullopt;
    }
    if (auto only = onlyFormOfLanguage(languages, preferred.front())) {
        return only;
    }
    // The matcher takes longer to make than the rest of a request; most devices never need it.
    const bool isPossible = std::any_of(preferred.begin(), preferred.end(),
                                        [&](const std::string& wanted) { return mayMatch(wanted, languages); });
    return isPossible ? bestMatch(languages, preferred) : std::nullopt;
}

}  // namespace lunabrook
