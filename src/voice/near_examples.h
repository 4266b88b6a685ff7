// Natural examples near a sentence that nobody understood: "lights on" -> "Lights off".

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "voice/sentence_book.h"

namespace lunabrook {

// At most three, nearest first, each of another intent: three ways to ask for one of them would hide the others. Near
// is what shares words, or words a slip away, that few examples have; may be empty.
std::vector<std::string> nearExamples(const std::vector<SentenceBook>& books, std::string_view said);

}  // namespace lunabrook
