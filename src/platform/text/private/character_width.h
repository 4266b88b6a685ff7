// What a terminal and a picture ask of a character alike.

#pragma once

#include <unicode/uchar.h>

namespace lunabrook {

inline constexpr UChar32 kZeroWidthJoiner = 0x200D;  // ties the next character to the one before it

inline bool isMark(UChar32 character) {
    const auto category = u_charType(character);
    return category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK;
}

inline bool takesNoRoom(UChar32 character) {
    return isMark(character) || u_charType(character) == U_FORMAT_CHAR ||
           u_hasBinaryProperty(character, UCHAR_EMOJI_MODIFIER) != 0;
}

inline bool isWide(UChar32 character) {
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH;
}

}  // namespace lunabrook
