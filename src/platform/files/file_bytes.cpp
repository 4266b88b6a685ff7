#include "platform/files/file_bytes.h"

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

}  // namespace lunabrook
