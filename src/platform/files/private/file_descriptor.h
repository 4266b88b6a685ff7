// An open file that closes itself, which bytes stand under a name, and what went wrong as text.

#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace lunabrook {

// Only the owner reads and writes what this program makes.
inline constexpr mode_t kPrivateFile = 0600;

class FileDescriptor {
public:
    FileDescriptor() = default;
    FileDescriptor(const std::filesystem::path& file, int flags, mode_t mode = 0)
        : number_(::open(file.c_str(), flags | O_CLOEXEC, mode)) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~FileDescriptor() { close(); }

    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }
    // False when the system could not keep what was written.
    bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

private:
    int number_ = -1;
};

// It differs after a file was replaced or written in place.
struct FileIdentity {
    dev_t device;
    ino_t inode;
    off_t size;
    time_t second;  // of the change
    long nanosecond;

    explicit FileIdentity(const struct stat& status)
        : device(status.st_dev),
          inode(status.st_ino),
          size(status.st_size),
          second(status.st_ctim.tv_sec),
          nanosecond(status.st_ctim.tv_nsec) {}
    bool operator==(const FileIdentity&) const = default;
};

// Nil when there is no file, or none that can be looked at.
inline std::optional<FileIdentity> identityOf(const std::filesystem::path& file) {
    struct stat status = {};
    return ::stat(file.c_str(), &status) == 0 ? std::optional<FileIdentity>(status) : std::nullopt;
}

// "No space left on device", of the last failed call.
inline std::string lastErrorText() { return std::generic_category().message(errno); }

}  // namespace lunabrook
