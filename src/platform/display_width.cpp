#include "platform/display_width.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cstdint>

namespace lunabrook {

namespace {

constexpr UChar32 kZeroWidthJoiner = 0x200D;
constexpr UChar32 kEmojiSelector = 0xFE0F;

bool isWide(UChar32 character) {
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH;
}

bool isInvisible(UChar32 character) {
    const int8_t category = u_charType(character);
    return category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK || category == U_FORMAT_CHAR ||
           category == U_CONTROL_CHAR || u_hasBinaryProperty(character, UCHAR_EMOJI_MODIFIER) != 0;
}

}  // namespace

int displayWidth(std::string_view text) {
    const auto* units = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto size = static_cast<std::int32_t>(text.size());
    int columns = 0;
    int last = 0;  // columns of the character before
    bool isJoined = false;
    for (std::int32_t i = 0; i < size;) {
        UChar32 character = 0;
        U8_NEXT_OR_FFFD(units, i, size, character);
        if (character == kEmojiSelector && last == 1) {
            columns += 1;  // a sign shown as an emoji is wide
            last = 2;
        } else if (!isInvisible(character) && !isJoined) {
            last = isWide(character) ? 2 : 1;
            columns += last;
        }
        isJoined = character == kZeroWidthJoiner;  // what a joiner ties on is drawn into the character before it
    }
    return columns;
}

}  // namespace lunabrook
