// The intent that a phrase asks for: "How ready am I today?" -> ReadinessIntent.
//
// A phrase is known or it is not: in the device's language or in English it is one of the definitions' phrases, apart
// from case, accents, punctuation and politeness. Nothing is guessed, since an intent may write.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/device/device.h"

namespace lunabrook {

struct Recognition {
    std::string className;             // empty when unclear
    std::vector<std::string> nearest;  // when unclear: at most three phrases, each of another intent, nearest first
};

// Reads the definitions; when they are missing or damaged everything is unclear, nothing is near, and a fault is told.
Recognition recognizePhrase(const Device& device, std::string_view phrase);

}  // namespace lunabrook
