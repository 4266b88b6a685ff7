// Reading and writing of whole files, and the lock that keeps other programs from writing meanwhile.

#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/files/private/file_descriptor.h"

namespace lunabrook {

// Up to the end, or a little beyond the limit: enough to know that there is more. False with `errno` when it cannot.
bool readAll(const FileDescriptor& file, std::size_t limit, std::string& bytes);

// In one step: a reader, a kill or a power cut finds the old bytes or the new ones. Owner and mode of an old file stay
// as far as this user may set them; a new one is private. The temporary file beside the target has its name and this
// ending; what lies there, such as a killed writer's, goes, so two writers at once need a lock or endings of their own.
// What went wrong, or nil; after a fault the old file is whole and the temporary one gone.
std::optional<std::string> replaceFile(const std::filesystem::path& target, const std::string& bytes,
                                       const std::string& ending = ".new");

// Where the links end: lock, temporary file and target stand together there, whatever name the file goes by. What the
// last link leads to may be missing.
std::filesystem::path withoutLinks(std::filesystem::path file);

// Waits until no other program has it locked; closing unlocks. What went wrong, or nil.
inline constexpr std::chrono::milliseconds kPatience = std::chrono::seconds(10);
std::optional<std::string> lock(const FileDescriptor& file, std::chrono::milliseconds patience);

// Root writes into the folders of others: what it makes there is theirs. Others may share what they make with a group.
void takeOwnerFrom(const std::filesystem::path& other, const FileDescriptor& file);

// Only the owner may look into what is made, whatever the mask of the process. What went wrong, or nil.
std::optional<std::string> makeFolder(const std::filesystem::path& folder);

}  // namespace lunabrook
