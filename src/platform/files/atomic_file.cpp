#include "platform/files/private/atomic_file.h"

#include <sys/stat.h>

#include "platform/files/private/file_descriptor.h"

namespace lunabrook {

namespace {

bool writeAll(const FileDescriptor& file, const std::string& bytes) {
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t count = ::write(file.number(), bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        written += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return true;
}

}  // namespace

std::optional<std::string> replaceFile(const std::filesystem::path& target, const std::string& bytes,
                                       const std::filesystem::path& temporary) {
    FileDescriptor file(temporary, O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW, kPrivateFile);
    // The bytes reach the disk before the name does, so a power cut never finds half of them.
    const bool isWritten = file.isOpen() && ::fchmod(file.number(), kPrivateFile) == 0 && writeAll(file, bytes) &&
                           ::fdatasync(file.number()) == 0 && file.close();
    if (isWritten && ::rename(temporary.c_str(), target.c_str()) == 0) {
        return std::nullopt;
    }
    const std::string error = lastErrorText();
    ::unlink(temporary.c_str());
    return error;
}

std::filesystem::path uniqueTemporary(const std::filesystem::path& target) {
    std::filesystem::path temporary = target;
    temporary += "." + std::to_string(::getpid()) + ".new";
    return temporary;
}

}  // namespace lunabrook
