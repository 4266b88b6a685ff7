#include "platform/text/string_table.h"

#include <unicode/utf16.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "platform/files/property_list.h"
#include "platform/text/private/icu.h"

namespace lunabrook {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";
constexpr UChar32 kReplacementCharacter = 0xFFFD;

class Parser {
public:
    explicit Parser(std::string_view text) : text_(text) {}

    std::variant<StringTable, SyntaxError> parse() {
        StringTable table;
        for (skipBlanks(); !error_ && index_ < text_.size(); skipBlanks()) {
            std::string key = readQuoted();
            expect('=');
            skipBlanks();
            std::string value = readQuoted();
            expect(';');
            table.insert_or_assign(std::move(key), std::move(value));
        }
        if (error_) {
            return *error_;
        }
        return table;
    }

private:
    // The first one stays; after it nothing is read any more.
    void fail(std::size_t position, std::string what) {
        const auto end = text_.begin() + static_cast<std::ptrdiff_t>(std::min(position, text_.size()));
        if (!error_) {
            error_ = SyntaxError{1 + static_cast<int>(std::count(text_.begin(), end, '\n')), std::move(what)};
        }
        index_ = text_.size();
    }

    bool startsWith(std::string_view prefix) const { return text_.substr(index_).starts_with(prefix); }

    // Blanks and comments.
    void skipBlanks() {
        for (;;) {
            index_ = std::min(text_.find_first_not_of(kBlanks, index_), text_.size());
            if (startsWith("//")) {
                index_ = std::min(text_.find('\n', index_), text_.size());
            } else if (startsWith("/*")) {
                const std::size_t end = text_.find("*/", index_ + 2);
                if (end == std::string_view::npos) {
                    fail(index_, "a comment has no end");
                    return;
                }
                index_ = end + 2;
            } else {
                return;
            }
        }
    }

    void expect(char wanted) {
        skipBlanks();
        if (index_ < text_.size() && text_[index_] == wanted) {
            ++index_;
        } else {
            fail(index_, std::string("expected '") + wanted + "'");
        }
    }

    std::string readQuoted() {
        const std::size_t start = index_;
        if (!startsWith("\"")) {
            fail(index_, "expected '\"'");
            return {};
        }
        std::string quoted;
        for (++index_; index_ < text_.size() && text_[index_] != '"';) {
            if (text_[index_] == '\\') {
                ++index_;
                readEscape(quoted);
            } else {
                quoted += text_[index_++];
            }
        }
        if (index_ < text_.size()) {
            ++index_;
        } else {
            fail(start, "a text has no closing '\"'");
        }
        return quoted;
    }

    void readEscape(std::string& quoted) {
        if (index_ == text_.size()) {
            return;
        }
        const char escaped = text_[index_++];
        switch (escaped) {
            case 'n':
                quoted += '\n';
                break;
            case 't':
                quoted += '\t';
                break;
            case 'r':
                quoted += '\r';
                break;
            case 'U':
                appendCharacter(quoted, readCodePoint());
                break;
            default:
                quoted += escaped;
        }
    }

    // The four digits after \U. Nil, and nothing is read, when they are not there.
    std::optional<UChar32> readCodeUnit() {
        constexpr std::size_t kDigits = 4;
        unsigned unit = 0;
        const std::string_view digits = text_.substr(index_, kDigits);
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), unit, 16);
        if (digits.size() < kDigits || read.ptr != digits.data() + digits.size()) {
            return std::nullopt;
        }
        index_ += kDigits;
        return static_cast<UChar32>(unit);
    }

    // One code unit, or the two of a pair; a lone half of a pair becomes the replacement character.
    UChar32 readCodePoint() {
        const auto unit = readCodeUnit();
        if (!unit) {
            fail(index_, "expected four hexadecimal digits after '\\U'");
            return kReplacementCharacter;
        }
        if (!U16_IS_SURROGATE(*unit)) {
            return *unit;
        }
        const std::size_t afterUnit = index_;
        if (U16_IS_SURROGATE_LEAD(*unit) && startsWith("\\U")) {
            index_ += 2;
            const auto trail = readCodeUnit();
            if (trail && U16_IS_TRAIL(*trail)) {
                return U16_GET_SUPPLEMENTARY(*unit, *trail);
            }
        }
        index_ = afterUnit;
        return kReplacementCharacter;
    }

    static void appendCharacter(std::string& text, UChar32 character) {
        icu::UnicodeString(character).toUTF8String(text);
    }

    std::string_view text_;
    std::size_t index_ = 0;
    std::optional<SyntaxError> error_;
};

// UTF-8 without a byte-order mark.
std::variant<std::string, SyntaxError> decoded(std::string_view bytes) {
    const bool isLittleEndian = bytes.starts_with("\xFF\xFE");
    if (isLittleEndian || bytes.starts_with("\xFE\xFF")) {
        icu::UnicodeString text;
        for (std::size_t index = 2; index + 1 < bytes.size(); index += 2) {
            const auto first = static_cast<unsigned char>(bytes[index]);
            const auto second = static_cast<unsigned char>(bytes[index + 1]);
            text.append(static_cast<char16_t>(isLittleEndian ? first | second << 8 : first << 8 | second));
        }
        return utf8FromUnicode(text);
    }
    std::string text(bytes.substr(bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0));
    // A round trip changes ill-formed bytes and nothing else.
    const std::string wellFormed = utf8FromUnicode(unicodeFromUtf8(text));
    const auto fault = std::mismatch(text.begin(), text.end(), wellFormed.begin(), wellFormed.end()).first;
    if (fault != text.end()) {
        return SyntaxError{1 + static_cast<int>(std::count(text.begin(), fault, '\n')), "is not UTF-8"};
    }
    return text;
}

std::variant<StringTable, SyntaxError> tableFromPropertyList(std::string_view bytes) {
    const auto contents = dictionaryFromPropertyList(bytes);
    if (const auto* what = std::get_if<std::string>(&contents)) {
        return SyntaxError{0, *what};
    }
    StringTable table;
    for (const auto& [key, value] : std::get<Dictionary>(contents)) {
        if (value.string() != nullptr) {
            table.emplace(key, *value.string());
        }
    }
    return table;
}

}  // namespace

std::variant<StringTable, SyntaxError> stringTableFromBytes(std::string_view bytes) {
    if (bytes.starts_with("bplist00")) {
        return tableFromPropertyList(bytes);
    }
    const auto text = decoded(bytes);
    if (const auto* error = std::get_if<SyntaxError>(&text)) {
        return *error;
    }
    std::string_view table = std::get<std::string>(text);
    const std::string_view start = table.substr(std::min(table.find_first_not_of(kBlanks), table.size()));
    if (start.starts_with("<?xml") || start.starts_with("<!DOCTYPE plist") || start.starts_with("<plist")) {
        return tableFromPropertyList(start);
    }
    return Parser(table).parse();
}

}  // namespace lunabrook
