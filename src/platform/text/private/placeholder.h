// One placeholder of a format string, taken apart: "%2$-5.1f" is the second argument as a real, left-aligned.

#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace lunabrook {

inline constexpr int kUsualFractionDigits = 6;

struct Placeholder {
    std::optional<std::size_t> position;  // 1 is the first argument; none takes the next one
    bool isLeftAligned = false;
    bool showsPlus = false;
    bool showsBlank = false;
    bool fillsWithZeros = false;
    bool isLong = false;
    std::size_t width = 0;
    std::optional<int> precision;
    char conversion = 0;  // one of @ d u f %

    std::size_t length = 0;  // of what was read, without the first %
};

// Reads the one that follows a %. Nil when it is none that is known, or its width or precision is beyond 512.
std::optional<Placeholder> placeholderAtStart(std::string_view text);

}  // namespace lunabrook
