#include "voice/resource_file.h"

#include <fstream>

namespace lunabrook {

std::variant<std::string, Damage> resourceFile(const std::filesystem::path& file) {
    constexpr std::uintmax_t kMaximumBytes = std::uintmax_t{1} << 20;
    std::error_code error;
    const std::uintmax_t size =
        std::filesystem::is_regular_file(file, error) ? std::filesystem::file_size(file, error) : kMaximumBytes + 1;
    if (error || size > kMaximumBytes) {
        return Damage{0, "is missing or too large"};
    }
    std::ifstream stream(file, std::ios::binary);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    if (!stream.read(bytes.data(), static_cast<std::streamsize>(size))) {
        return Damage{0, "cannot be read"};
    }
    return bytes;
}

}  // namespace lunabrook
