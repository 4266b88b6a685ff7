// Names near a mistyped one: "readines" -> "readiness".

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lunabrook {

// At most three, nearest first; only those a few slips of the finger away or that hold what was typed, capitals apart.
// May be empty.
std::vector<std::string> nearNames(std::string_view mistyped, const std::vector<std::string>& names);

// Slips in bytes: one to insert, drop or replace, or two neighbours to swap.
std::size_t editDistance(std::string_view left, std::string_view right);

// "; did you mean readiness?", or nothing.
std::string suggestion(std::string_view mistyped, const std::vector<std::string>& names);

}  // namespace lunabrook
