#include "platform/files/file_bytes.h"

#include <random>

#include "platform/files/private/whole_file.h"

namespace lunabrook {

std::variant<std::string, UnreadableFile> bytesOfFile(const std::filesystem::path& file, std::size_t limit) {
    std::string bytes;
    const FileDescriptor opened(file, O_RDONLY);
    if (!opened.isOpen() || !readAll(opened, limit, bytes)) {
        return UnreadableFile{lastErrorText()};
    }
    return bytes;
}

std::optional<std::string> writeFile(const std::filesystem::path& file, const std::string& bytes) {
    std::error_code error;
    const std::filesystem::path real = withoutLinks(std::filesystem::absolute(file, error));
    if (error) {
        return error.message();
    }
    if (std::filesystem::exists(file, error) && !std::filesystem::is_regular_file(file, error)) {
        return "it is no regular file";  // replacing a device or a folder is nothing that anybody means
    }
    // A name that nobody else takes, since no lock is there.
    return replaceFile(real, bytes, "." + std::to_string(std::random_device()()));
}

}  // namespace lunabrook
