// Names near a mistyped one: "readines" -> "readiness".

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lunabrook {

// At most three, nearest first; only those a few slips of the finger away or that hold what was typed, capitals apart.
// May be empty.
std::vector<std::string> nearNames(std::string_view mistyped, const std::vector<std::string>& names);

// "; did you mean readiness?", or nothing.
std::string suggestion(std::string_view mistyped, const std::vector<std::string>& names);

}  // namespace lunabrook
