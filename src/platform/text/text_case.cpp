#include "platform/text/text_case.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include "platform/text/private/icu.h"

namespace lunabrook {

namespace {

// Apostrophes, modifier letters and combining marks belong to the character before them: they neither begin nor end a
// word.
bool isPartOfTheCharacterBefore(UChar32 character) {
    constexpr uint32_t kMarks = U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK | U_GC_LM_MASK;
    return character == U'\'' || character == U'\u2019' || (U_GET_GC_MASK(character) & kMarks) != 0;
}

}  // namespace

std::string lowercaseString(std::string_view text) {
    return utf8FromUnicode(unicodeFromUtf8(text).toLower(icu::Locale::getRoot()));
}

std::string uppercaseString(std::string_view text) {
    return utf8FromUnicode(unicodeFromUtf8(text).toUpper(icu::Locale::getRoot()));
}

std::string capitalizedString(std::string_view text) {
    // Lower case is found on the whole text, since a final sigma depends on its neighbours.
    const icu::UnicodeString lower = unicodeFromUtf8(text).toLower(icu::Locale::getRoot());
    icu::UnicodeString capitalized;
    bool insideWord = false;
    for (int32_t index = 0; index < lower.length(); index = lower.moveIndex32(index, 1)) {
        const UChar32 character = lower.char32At(index);
        const bool isCased = u_hasBinaryProperty(character, UCHAR_CASED) != 0;
        if (isCased && !insideWord) {
            capitalized.append(
                icu::UnicodeString(character).toTitle(nullptr, icu::Locale::getRoot(), U_TITLECASE_WHOLE_STRING));
        } else {
            capitalized.append(character);
        }
        insideWord = isPartOfTheCharacterBefore(character) ? insideWord : isCased;
    }
    return utf8FromUnicode(capitalized);
}

SplitText splitAfterFirstCharacter(std::string_view text) {
    std::size_t length = 0;
    if (!text.empty()) {
        U8_FWD_1(text.data(), length, text.size());
    }
    return {std::string(text.substr(0, length)), std::string(text.substr(length))};
}

std::string stringByReplacing(std::string_view text, std::string_view what, std::string_view by) {
    if (what.empty()) {
        return std::string(text);
    }
    std::string replaced;
    std::size_t start = 0;
    for (std::size_t found; (found = text.find(what, start)) != std::string_view::npos; start = found + what.size()) {
        replaced.append(text, start, found - start).append(by);
    }
    return replaced.append(text, start);
}

}  // namespace lunabrook
