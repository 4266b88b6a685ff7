#include "platform/values/base64.h"

#include <absl/strings/escaping.h>

namespace lunabrook {

std::string base64FromData(const Data& data) {
    return absl::Base64Escape(absl::string_view(reinterpret_cast<const char*>(data.data()), data.size()));
}

}  // namespace lunabrook
