// Data as text: standard base64 with padding.

#pragma once

#include <string>

#include "platform/values/value.h"

namespace lunabrook {

std::string base64FromData(const Data& data);

}  // namespace lunabrook
