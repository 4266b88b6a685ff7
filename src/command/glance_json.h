// The morning at a glance for programs that draw their own.

#pragma once

#include <string>

#include "command/glance.h"

namespace lunabrook {

// One object on one line: the texts, fractions and names of the glance, a card's "content" null without data; "tint" is
// "favourable", "unfavourable" or "none", "change" is "rise", "fall" or "none", "direction" is "ltr" or "rtl".
std::string glanceJson(const Glance& glance);

}  // namespace lunabrook
