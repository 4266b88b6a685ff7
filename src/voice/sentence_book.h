// Which intents a sentence of one language asks for: "Hey, how ready am I today, please?" -> ReadinessIntent.
//
// A sentence matches a template or it does not: the whole of it, as the language hears it, once words of politeness are
// left away. Nothing is guessed.

#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text/spoken_text.h"
#include "voice/language_sentences.h"

namespace lunabrook {

class SentenceBook {
public:
    explicit SentenceBook(LanguageSentences sentences, SpokenText::Variants variants = SpokenText::Variants::folded);

    // Every intent that has the sentence: none for what nobody says, two only when a file is wrong. Accents and width
    // make no difference, save where two intents would share a sentence then.
    std::set<std::string> classesSaidAs(std::string_view sentence) const;

    // As it is heard, without words of politeness.
    std::string essential(std::string_view sentence) const;

    const LanguageSentences& sentences() const { return sentences_; }

private:
    using Words = std::vector<std::string>;

    void hear(SentenceTemplate& node) const;
    std::size_t skippedAt(const Words& words, std::size_t start) const;
    std::string withoutSkippedEnds(std::string text) const;

    LanguageSentences sentences_;
    SpokenText spoken_;
    std::vector<Words> skipWords_;
};

}  // namespace lunabrook
