// The bytes of a whole file that somebody names, up to a limit.

#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <variant>

namespace lunabrook {

struct UnreadableFile {
    std::string why;  // "Is a directory"
};

// Of a larger file a little more than the limit: enough to know that there is more.
std::variant<std::string, UnreadableFile> bytesOfFile(const std::filesystem::path& file, std::size_t limit);

}  // namespace lunabrook
