// Whole files that somebody names.

#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>

namespace lunabrook {

struct UnreadableFile {
    std::string why;  // "Is a directory"
};

// Of a larger file a little more than the limit: enough to know that there is more.
std::variant<std::string, UnreadableFile> bytesOfFile(const std::filesystem::path& file, std::size_t limit);

// In one step, into the file itself where the name is a link to it: a reader finds the old bytes or the new ones. What
// went wrong, or nil.
std::optional<std::string> writeFile(const std::filesystem::path& file, const std::string& bytes);

}  // namespace lunabrook
