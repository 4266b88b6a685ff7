// Which bytes stand under a name now: it differs after a file was replaced or written in place.

#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <optional>

namespace lunabrook {

struct FileIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    timespec changed = {};

    explicit FileIdentity(const struct stat& status)
        : device(status.st_dev), inode(status.st_ino), size(status.st_size), changed(status.st_ctim) {}

    bool operator==(const FileIdentity& other) const {
        return device == other.device && inode == other.inode && size == other.size &&
               changed.tv_sec == other.changed.tv_sec && changed.tv_nsec == other.changed.tv_nsec;
    }
};

// Nil when there is no file, or none that can be looked at.
inline std::optional<FileIdentity> identityOf(const std::filesystem::path& file) {
    struct stat status = {};
    return ::stat(file.c_str(), &status) == 0 ? std::optional<FileIdentity>(status) : std::nullopt;
}

}  // namespace lunabrook
