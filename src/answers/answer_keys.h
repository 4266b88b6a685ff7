// The keys of an answer dictionary; the copyable summary has the same key as in the results.

#pragma once

#include <string_view>

namespace lunabrook {

inline constexpr std::string_view kResponse = "response";        // the spoken sentence
inline constexpr std::string_view kStatusLabel = "statusLabel";  // of lights off, not spoken

}  // namespace lunabrook
