#include "voice/resource_file.h"

#include <utility>

#include "platform/files/file_bytes.h"

namespace lunabrook {

std::variant<std::string, Damage> resourceFile(const std::filesystem::path& file) {
    constexpr std::size_t kMaximumBytes = std::size_t{1} << 20;
    const Damage noFile{0, "is missing or too large"};
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(file, ignored)) {
        return noFile;
    }
    auto read = bytesOfFile(file, kMaximumBytes);
    auto* bytes = std::get_if<std::string>(&read);
    if (bytes == nullptr) {
        return Damage{0, "cannot be read"};
    }
    return bytes->size() <= kMaximumBytes ? std::variant<std::string, Damage>(std::move(*bytes)) : noFile;
}

}  // namespace lunabrook
