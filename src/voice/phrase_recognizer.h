// The intent that a sentence asks for: "How ready am I today?" -> ReadinessIntent.
//
// In the device's language or in English a sentence matches one of the templates of Sentences.yaml or it does not.
// Nothing is guessed, since an intent may write.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/device/device.h"

namespace lunabrook {

struct Recognition {
    std::string className;             // empty when unclear
    std::vector<std::string> nearest;  // when unclear: at most three examples, each of another intent, nearest first
};

// Reads the templates. A language whose file is damaged is not understood, and its fault is told. A sentence of more
// than 1,000 bytes is unclear. Nothing is near what shares no word of any weight with an example.
Recognition recognizePhrase(const Device& device, std::string_view phrase);

}  // namespace lunabrook
