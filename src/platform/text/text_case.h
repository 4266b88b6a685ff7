// Case and small changes of texts, the same in every locale. Input and output are UTF-8.

#pragma once

#include <string>
#include <string_view>

namespace lunabrook {

std::string lowercaseString(std::string_view text);
std::string uppercaseString(std::string_view text);

// First cased letter of each word upper-case, the rest lower-case. An apostrophe does not begin a word, a digit,
// hyphen, blank or dot does: "Tonight's Bedtime", "49Ers".
std::string capitalizedString(std::string_view text);

// The first character (code point) and what follows it; both empty for an empty text.
struct SplitText {
    std::string first;
    std::string rest;
};
SplitText splitAfterFirstCharacter(std::string_view text);

// Every occurrence, in one pass from the left: "  " by " " turns three blanks into two.
std::string stringByReplacing(std::string_view text, std::string_view what, std::string_view by);

}  // namespace lunabrook
