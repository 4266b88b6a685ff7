#include "platform/text/spoken_text.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <utility>

#include "platform/text/private/icu.h"

namespace lunabrook {

namespace {

constexpr UChar32 kUnreadable = 0xFFFD;  // what stands for bytes that are no UTF-8; it must not fall away

// Joins what is heard one after another. Punctuation waits for a letter behind it; where none comes it falls away.
class Listener {
public:
    explicit Listener(std::size_t length) { text_.reserve(length); }
    void hearLetter(std::string_view letter) {
        if (!waiting_.empty()) {
            text_ += insideWord_ ? waiting_ : "";
            waiting_.clear();
        }
        text_ += letter;
        insideWord_ = true;
    }
    void hearPunctuation(std::string_view mark) { waiting_ += mark; }
    void hearBlank() {
        waiting_.clear();
        insideWord_ = false;
        if (text_.empty() || text_.back() != ' ') {
            text_ += ' ';
        }
    }
    std::string takeText() { return std::move(text_); }

private:
    std::string text_;
    std::string waiting_;
    bool insideWord_ = false;
};

bool isAsciiLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9');
}

std::string heardAscii(std::string_view text) {
    Listener listener(text.size());
    for (const char byte : text) {
        if (isAsciiLetter(byte)) {
            const char lower = byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
            listener.hearLetter({&lower, 1});
        } else if (byte == ' ' || byte == '-' || (byte >= '\t' && byte <= '\r')) {
            listener.hearBlank();
        } else if (byte < ' ' || byte == '\x7F') {
            listener.hearLetter({&byte, 1});  // nobody says it, so nothing matches it
        } else if (byte != '\'' && byte != '`') {
            listener.hearPunctuation({&byte, 1});
        }
    }
    return listener.takeText();
}

bool isAscii(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
}

bool isApostrophe(UChar32 character) {
    constexpr UChar32 kApostrophes[] = {'\'',   '`',    0x00B4, 0x02B9, 0x02BB, 0x02BC,
                                        0x2018, 0x2019, 0x201B, 0x2032, 0xFF07};
    return std::find(std::begin(kApostrophes), std::end(kApostrophes), character) != std::end(kApostrophes);
}

bool isSilent(UChar32 character) {
    return isApostrophe(character) || u_hasBinaryProperty(character, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0;
}

// Punctuation as wide as an ideograph has its blank built in, and stands between words that have none: "僕、何時間".
bool isWidePunctuation(UChar32 character) {
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return (U_GET_GC_MASK(character) & U_GC_P_MASK) != 0 && (width == U_EA_WIDE || width == U_EA_FULLWIDTH);
}

bool isBlank(UChar32 character) {
    return u_isUWhiteSpace(character) != 0 || (U_GET_GC_MASK(character) & U_GC_PD_MASK) != 0 ||
           (isWidePunctuation(character) && !isApostrophe(character));
}

bool isPunctuation(UChar32 character) {
    return character != kUnreadable && (U_GET_GC_MASK(character) & (U_GC_P_MASK | U_GC_S_MASK)) != 0;
}

// "I" has a dotless small letter in Turkish and its relatives.
uint32_t caseFoldingOf(std::string_view language) {
    const std::string_view name = language.substr(0, language.find_first_of("-_"));
    return name == "tr" || name == "az" ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT;
}

icu::UnicodeString normalized(const icu::Normalizer2* form, const icu::UnicodeString& text) {
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString result = form != nullptr ? form->normalize(text, status) : text;
    return succeeded(status) ? result : text;
}

icu::UnicodeString composed(const icu::UnicodeString& text) {
    UErrorCode status = U_ZERO_ERROR;
    return normalized(icu::Normalizer2::getNFCInstance(status), text);
}

// Without its marks and without what is special about its form: "ö" -> "o", "₂" -> "2". Empty for a mark.
icu::UnicodeString bareForm(const icu::UnicodeString& letter) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString parts = normalized(icu::Normalizer2::getNFKDInstance(status), letter);
    icu::UnicodeString bare;
    for (int32_t index = 0; index < parts.length(); index = parts.moveIndex32(index, 1)) {
        if (const UChar32 part = parts.char32At(index); (U_GET_GC_MASK(part) & U_GC_MN_MASK) == 0) {
            bare.append(part);
        }
    }
    return composed(bare);
}

}  // namespace

SpokenText::SpokenText(std::string language, Variants variants)
    : language_(std::move(language)), caseFolding_(caseFoldingOf(language_)), variants_(variants) {}

std::string SpokenText::heard(std::string_view text) const {
    if (caseFolding_ == U_FOLD_CASE_DEFAULT && isAscii(text)) {
        return heardAscii(text);
    }
    const icu::UnicodeString folded = composed(composed(unicodeFromUtf8(text)).foldCase(caseFolding_));
    Listener listener(text.size());
    for (int32_t index = 0; index < folded.length(); index = folded.moveIndex32(index, 1)) {
        const UChar32 character = folded.char32At(index);
        if (isBlank(character)) {
            listener.hearBlank();
        } else if (isPunctuation(character) && !isSilent(character)) {
            listener.hearPunctuation(utf8FromUnicode(icu::UnicodeString(character)));
        } else if (!isSilent(character)) {
            listener.hearLetter(variantless(static_cast<char32_t>(character)));
        }
    }
    return listener.takeText();
}

const std::string& SpokenText::variantless(char32_t letter) const {
    const auto known = letters_.find(letter);
    if (known != letters_.end()) {
        return known->second;
    }
    const icu::UnicodeString whole(static_cast<UChar32>(letter));
    std::string heard = utf8FromUnicode(whole);
    if (variants_ == Variants::folded && letter >= 0x80 && letter != kUnreadable) {
        if (collation_ == nullptr) {
            collation_ = std::make_unique<Collation>(language_);
        }
        std::string bare = utf8FromUnicode(bareForm(whole).foldCase(caseFolding_));
        if (bare != heard && collation_->key(bare) == collation_->key(heard)) {
            heard = std::move(bare);
        }
    }
    return letters_.emplace(letter, std::move(heard)).first->second;
}

}  // namespace lunabrook
