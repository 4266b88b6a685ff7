// Data as text: standard base64 with padding.

#pragma once

#include <string>

#include "platform/value.h"

namespace lunabrook {

std::string base64FromData(const Data& data);

}  // namespace lunabrook
