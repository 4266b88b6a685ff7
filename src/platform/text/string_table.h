// Reading of a string table: "key" = "value"; with // and /* */ comments, or a property list of texts.
//
// Old-style text is UTF-8, or UTF-16 with a byte-order mark; escapes are \n \t \r \" \\ \Uxxxx (any other escaped
// character is itself). One syntax error discards the whole table.

#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "platform/text/bundle.h"

namespace lunabrook {

struct SyntaxError {
    int line = 0;      // 1 for the first
    std::string what;  // "expected ';'"
};

std::variant<StringTable, SyntaxError> stringTableFromBytes(std::string_view bytes);

}  // namespace lunabrook
