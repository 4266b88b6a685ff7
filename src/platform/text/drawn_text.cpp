#include "platform/text/drawn_text.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cstdint>

#include "platform/text/private/character_width.h"
#include "platform/text/private/icu.h"

namespace lunabrook {

namespace {

constexpr UChar32 kReplacement = 0xFFFD;
constexpr UChar32 kByteOrderMark = 0xFEFF;

constexpr double kEllipsisEms = 1;

double ofLatinSign(char sign) {
    constexpr std::string_view kSlim = " .,:;'!|ijlI()[]/-";
    constexpr std::string_view kBroad = "mwMW%@";
    return kSlim.find(sign) != std::string_view::npos    ? 0.37
           : kBroad.find(sign) != std::string_view::npos ? 0.98
           : u_isupper(static_cast<UChar32>(sign))       ? 0.70
           : u_isdigit(static_cast<UChar32>(sign))       ? 0.66
                                                         : 0.62;
}

double emsOf(UChar32 character) {
    constexpr UChar32 kLastOfAscii = 0x7E;
    constexpr UChar32 kLongestLigature = 0xFDFD;  // a whole sentence in one character
    if (takesNoRoom(character)) {
        return 0;
    }
    if (character <= kLastOfAscii) {
        return ofLatinSign(static_cast<char>(character));
    }
    if (u_hasBinaryProperty(character, UCHAR_EMOJI_PRESENTATION) != 0) {
        return 1.35;
    }
    if (isWide(character)) {
        return 1;
    }
    if (character == kLongestLigature) {
        return 12;
    }
    const auto direction = u_charDirection(character);
    const bool isJoined = direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC;
    const bool isSlender = isJoined || u_islower(character) || u_isdigit(character);
    return u_isspace(character) ? 0.37 : isSlender ? 0.64 : 0.75;
}

// The next character from `offset` on, which moves behind it.
UChar32 nextOf(std::string_view text, std::size_t& offset) {
    UChar32 character = 0;
    U8_NEXT_OR_FFFD(reinterpret_cast<const std::uint8_t*>(text.data()), offset, text.size(), character);
    return character;
}

bool isForbidden(UChar32 character) {
    return u_charType(character) == U_CONTROL_CHAR || U_IS_UNICODE_NONCHAR(character);
}

}  // namespace

std::string drawableText(std::string_view text) {
    constexpr int kMostMarks = 3;
    icu::UnicodeString drawable;
    int marks = 0;
    for (std::size_t offset = 0; offset < text.size();) {
        const UChar32 character = nextOf(text, offset);
        marks = isMark(character) ? marks + 1 : 0;
        if (character == '\n' || character == '\t' || character == '\r') {
            drawable.append(' ');
        } else if (marks <= kMostMarks && character != kByteOrderMark) {
            drawable.append(isForbidden(character) ? kReplacement : character);
        }
    }
    return utf8FromUnicode(drawable);
}

double widthInEms(std::string_view text) {
    double ems = 0;
    for (std::size_t offset = 0; offset < text.size();) {
        ems += emsOf(nextOf(text, offset));
    }
    return ems;
}

std::string textFittedToEms(std::string_view text, double ems) {
    if (widthInEms(text) <= ems) {
        return std::string(text);
    }
    std::size_t end = 0;  // of what fits beside the ellipsis, with all its marks
    double width = kEllipsisEms;
    bool isJoined = false;
    for (std::size_t offset = 0; offset < text.size() && width <= ems;) {
        const std::size_t start = offset;
        const UChar32 character = nextOf(text, offset);
        if (!takesNoRoom(character) && !isJoined) {
            end = start;
        }
        isJoined = character == kZeroWidthJoiner;
        width += emsOf(character);
    }
    while (end > 0 && text[end - 1] == ' ') {
        --end;
    }
    return std::string(text.substr(0, end)) + "…";
}

}  // namespace lunabrook
