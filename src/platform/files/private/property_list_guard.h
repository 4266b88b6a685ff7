// The check that a property list's bytes pass before the parser sees them.
//
// The parser recurses (200,000 nested arrays overflow its stack), takes time quadratic in depth, and writes shared
// values out once for each mention (a hundred doubled arrays would be 2^100 values). Every offset of a binary list is
// checked here as well, so the parser never meets a damaged one.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lunabrook {

inline constexpr const char* kCutShort = "is cut short or damaged";
inline constexpr const char* kTooDeep = "is nested deeper than 128 levels";
inline constexpr const char* kTooMany = "holds more than four million values";

struct PropertyListCheck {
    std::optional<std::string> damage;  // what is wrong: "is cut short"; nil when the parser may read the bytes
    bool cannotBeWrittenBack = false;   // holds a text that the parser would change: a zero or an unpaired character
};

bool isBinaryPropertyList(std::string_view bytes);
PropertyListCheck checkBinaryPropertyList(std::string_view bytes);
PropertyListCheck checkXmlPropertyList(std::string_view bytes);

}  // namespace lunabrook
