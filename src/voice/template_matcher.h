// Whether a sentence is one of those that a template means: the whole of it, in time that grows with the length of the
// sentence and the unfolded size of the template alone.
//
// Each piece of the template turns the set of places in the sentence where it may begin into the set of those where it
// may end; no list of sentences is ever written out. A blank of the template needs one in the sentence, save at its
// ends and behind another one, so that none is left over beside an option that is left out.

#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "voice/sentence_file.h"

namespace lunabrook {

class TemplateMatcher {
public:
    // `sentence` is heard as the file's language hears it, without blanks at its ends; it and `file` outlive the
    // matcher.
    TemplateMatcher(const SentenceFile& file, std::string_view sentence)
        : file_(file), sentence_(sentence), opened_(file.rules.size()) {}

    bool matches(const SentenceTemplate& whole) const;

private:
    using Places = std::vector<std::size_t>;  // ascending

    Places after(const SentenceTemplate& node, const Places& starts) const;
    const Places& afterOpening(std::size_t rule) const;
    Places afterText(std::string_view heard, const Places& starts) const;
    Places afterSequence(const SentenceTemplate& node, const Places& starts) const;
    Places afterAlternatives(const SentenceTemplate& node, const Places& starts) const;
    Places afterPermutation(const SentenceTemplate& node, const Places& starts) const;
    bool isAtBorder(std::size_t place) const;

    const SentenceFile& file_;
    std::string_view sentence_;
    mutable std::vector<std::optional<Places>>
        opened_;  // by rule, from the sentence's start: most templates begin alike
};

}  // namespace lunabrook
