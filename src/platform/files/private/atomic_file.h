// Writing of a whole file in one step: a reader, a kill or a power cut finds the old bytes or the new ones.

#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace lunabrook {

// Writes `temporary` (same folder, mode 0600), puts it on the disk and renames it over `target`. What went wrong, or
// nil; after a fault the old file is whole and the temporary one gone.
std::optional<std::string> replaceFile(const std::filesystem::path& target, const std::string& bytes,
                                       const std::filesystem::path& temporary);

// A name beside `target` that no other process uses.
std::filesystem::path uniqueTemporary(const std::filesystem::path& target);

}  // namespace lunabrook
