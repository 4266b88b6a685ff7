// Names near a mistyped one: "readines" -> "readiness".

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lunabrook {

// What somebody may type, and the name that is suggested for it: one thing may be known by several.
struct KnownName {
    std::string typed;
    std::string shown;
};

// At most three that are shown, nearest first; only those a few slips of the finger away or that hold what was typed,
// capitals apart. May be empty.
std::vector<std::string> nearNames(std::string_view mistyped, const std::vector<KnownName>& names);

// Slips in bytes: one to insert, drop or replace, or two neighbours to swap.
std::size_t editDistance(std::string_view left, std::string_view right);

// As a sentence lists them: {"a", "b", "c"} with " or " -> "a, b or c".
std::string listed(const std::vector<std::string>& names, std::string_view beforeTheLast);

// "; did you mean readiness?", or nothing.
std::string suggestion(std::string_view mistyped, const std::vector<KnownName>& names);

// As people write a name, in the form in which it is compared: "Blood oxygen" -> "blood-oxygen". Of ASCII alone.
std::string nameKey(std::string_view name);

}  // namespace lunabrook
