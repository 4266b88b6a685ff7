#include "platform/values/base64.h"

#include <absl/strings/escaping.h>

namespace lunabrook {

std::string base64FromData(const Data& data) {
    return absl::Base64Escape(absl::string_view(reinterpret_cast<const char*>(data.data()), data.size()));
}

std::optional<Data> dataFromBase64(std::string_view text) {
    std::string bytes;
    const bool isBase64 = absl::Base64Unescape(absl::string_view(text.data(), text.size()), &bytes);
    return isBase64 ? std::optional<Data>({bytes.begin(), bytes.end()}) : std::nullopt;
}

}  // namespace lunabrook
