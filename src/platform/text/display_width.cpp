#include "platform/text/display_width.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cstdint>

#include "platform/text/private/character_width.h"

namespace lunabrook {

namespace {

constexpr UChar32 kEmojiSelector = 0xFE0F;

bool isInvisible(UChar32 character) { return takesNoRoom(character) || u_charType(character) == U_CONTROL_CHAR; }

// Walks over a text and counts the columns of what it passed.
class Ruler {
public:
    explicit Ruler(std::string_view text)
        : units_(reinterpret_cast<const std::uint8_t*>(text.data())), size_(static_cast<std::int32_t>(text.size())) {}

    bool isAtEnd() const { return offset_ == size_; }
    std::size_t offset() const { return static_cast<std::size_t>(offset_); }
    int columns() const { return columns_; }

    void step() {
        UChar32 character = 0;
        U8_NEXT_OR_FFFD(units_, offset_, size_, character);
        if (character == kEmojiSelector && last_ == 1) {
            columns_ += 1;  // a sign shown as an emoji is wide
            last_ = 2;
        } else if (!isInvisible(character) && !isJoined_) {
            last_ = isWide(character) ? 2 : 1;
            columns_ += last_;
        }
        isJoined_ = character == kZeroWidthJoiner;  // what a joiner ties on is drawn into the character before it
    }

private:
    const std::uint8_t* units_;
    std::int32_t size_;
    std::int32_t offset_ = 0;
    int columns_ = 0;
    int last_ = 0;  // columns of the last visible character
    bool isJoined_ = false;
};

}  // namespace

int displayWidth(std::string_view text) {
    Ruler ruler(text);
    while (!ruler.isAtEnd()) {
        ruler.step();
    }
    return ruler.columns();
}

std::string withoutControls(std::string_view text) {
    std::string shown;
    const auto* units = reinterpret_cast<const std::uint8_t*>(text.data());
    for (std::size_t start = 0, end = 0; end < text.size(); start = end) {
        UChar32 character = 0;
        U8_NEXT_OR_FFFD(units, end, text.size(), character);
        const bool isControl = u_charType(character) == U_CONTROL_CHAR;
        shown += isControl ? "\uFFFD" : text.substr(start, end - start);
    }
    return shown;
}

std::string textFittedTo(std::string_view text, int columns) {
    Ruler ruler(text);
    std::size_t end = 0;  // of what fits beside the ellipsis
    while (!ruler.isAtEnd()) {
        ruler.step();
        if (ruler.columns() < columns) {
            end = ruler.offset();
        } else if (ruler.columns() > columns) {
            return std::string(text.substr(0, end)) + "…";
        }
    }
    return std::string(text);
}

std::string escapedText(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string shown;
    const auto* units = reinterpret_cast<const std::uint8_t*>(text.data());
    for (std::size_t start = 0, end = 0; end < text.size(); start = end) {
        UChar32 character = 0;
        U8_NEXT(units, end, text.size(), character);
        if (character == '\n' || character == '\t') {
            shown += character == '\n' ? "\\n" : "\\t";
        } else if (character >= 0 && u_charType(character) != U_CONTROL_CHAR) {
            shown += text.substr(start, end - start);
        } else {
            for (; start < end; ++start) {
                shown += {'\\', 'x', kDigits[units[start] >> 4U], kDigits[units[start] & 0xFU]};
            }
        }
    }
    return shown;
}

std::string quotedText(std::string_view text) {
    constexpr int kMostColumns = 60;
    constexpr std::size_t kMostBytes = 1000;  // more than anybody reads in 60 columns
    return "\"" + textFittedTo(escapedText(text.substr(0, kMostBytes)), kMostColumns) + "\"";
}

}  // namespace lunabrook
