// Templates shown to people: "(how|as) ready am I [<today>]?" -> "How ready am I?".

#pragma once

#include <string>
#include <vector>

#include "voice/sentence_file.h"

namespace lunabrook {

// The first alternative of each group, options left out, parts in the order written. It begins with a capital; its
// other letters and its punctuation are the template's own, so that the file decides whether a question mark is shown.
std::string naturalExample(const SentenceFile& file, const SentenceTemplate& sentence);

// The first sentence of each of the intent's entries, in the file's order.
std::vector<std::string> naturalExamples(const SentenceFile& file, const std::string& className);

}  // namespace lunabrook
