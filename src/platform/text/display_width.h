// Texts on a terminal: how many columns they take, and what is shown of what a terminal would obey.

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

// With escapes for control characters and for what is no text: "a\x1b[2J" -> "a\\x1b[2J". For messages, which may hold
// what somebody typed or named a file.
std::string escapedText(std::string_view text);

// The same between quotation marks, and at most 60 columns of it.
std::string quotedText(std::string_view text);

}  // namespace lunabrook
