// Text for a picture: what of it can be drawn, and how wide that is at most where the reader's fonts are unknown.
//
// An em is the size of the font. Widths are estimates by the kind of character, of a bold sans serif that is rather
// wide: widthInEms("Deep") is 2.6, where most fonts take 2.3.

#pragma once

#include <string>
#include <string_view>

namespace lunabrook {

// Well-formed text that XML holds: a blank for an end of line or a tab, U+FFFD for other controls and for what is no
// UTF-8; marks that would pile up beyond the line are left out.
std::string drawableText(std::string_view text);

double widthInEms(std::string_view text);

// The text, or as much of it as fits before "…".
std::string textFittedToEms(std::string_view text, double ems);

}  // namespace lunabrook
