// How many columns a text takes on a terminal.

#pragma once

#include <string>
#include <string_view>

namespace lunabrook {

// Wide and emoji characters take two columns, marks and joiners none: "Ⓡ" 1, "睡眠" 4, "💆‍♂️" 2.
int displayWidth(std::string_view text);

// With U+FFFD for every control character: a terminal would obey it. "a\x1b[2Jb" -> "a\uFFFD[2Jb"
std::string withoutControls(std::string_view text);

// The text, or as much of it as fits before "…" into so many columns (at least 1).
std::string textFittedTo(std::string_view text, int columns);

}  // namespace lunabrook
