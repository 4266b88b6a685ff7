// What a terminal and a picture ask of a character alike.

#pragma once

#include <unicode/uchar.h>

namespace lunabrook {

inline constexpr UChar32 kZeroWidthJoiner = 0x200D;  // ties the next character to the one before it

inline bool isWide(UChar32 character) {
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH;
}

}  // namespace lunabrook
