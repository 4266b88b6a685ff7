// A resource of the bundle, read whole; what is wrong with one, told by whoever read it.

#pragma once

#include <filesystem>
#include <string>
#include <variant>

namespace lunabrook {

struct Damage {
    int line = 0;      // 1 for the first; 0 when it has none
    std::string what;  // "is missing or too large"
};

// Of a regular file of at most 1 MiB.
std::variant<std::string, Damage> resourceFile(const std::filesystem::path& file);

}  // namespace lunabrook
