// Data as text: standard base64 with padding.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/values/value.h"

namespace lunabrook {

std::string base64FromData(const Data& data);
// Blanks may stand anywhere, the padding may be missing. Nil for other text.
std::optional<Data> dataFromBase64(std::string_view text);

}  // namespace lunabrook
