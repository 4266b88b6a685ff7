// What people say to a device: the sentences of its language and the English ones, which are understood everywhere.

#pragma once

#include <string>
#include <vector>

#include "platform/device/device.h"
#include "voice/sentence_file.h"

namespace lunabrook {

struct LanguageSentences {
    std::string language;  // "pt-BR": the bundle's own tag
    SentenceFile file;
};

// The device's language first, where the bundle has sentences in it. A damaged file is left out and its fault told, and
// so is an English one that is missing.
std::vector<LanguageSentences> languageSentences(const Device& device);

}  // namespace lunabrook
