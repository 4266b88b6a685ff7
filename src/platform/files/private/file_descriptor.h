// An open file that closes itself, and what can go wrong with one as text.

#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
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

// "No space left on device", of the last failed call.
inline std::string lastErrorText() { return std::generic_category().message(errno); }

}  // namespace lunabrook
