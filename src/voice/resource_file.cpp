#include "voice/resource_file.h"

#include <fstream>
#include <iterator>

namespace lunabrook {

std::variant<std::string, Damage> resourceFile(const std::filesystem::path& file) {
    constexpr std::uintmax_t kMaximumBytes = std::uintmax_t{1} << 20;
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error) || std::filesystem::file_size(file, error) > kMaximumBytes) {
        return Damage{0, "is missing or too large"};
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream.is_open()) {
        return Damage{0, "cannot be read"};
    }
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

}  // namespace lunabrook
