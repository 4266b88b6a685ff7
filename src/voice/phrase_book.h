// What people say for the intents in one language.
//
// Two phrases are the same when they have the same collation key once short forms are written out and words of
// politeness are left away: "Hey, what's my readiness, please?" is "What is my readiness?", and "what is my ready" is
// nothing.

#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text/collation.h"
#include "voice/intent_definitions.h"

namespace lunabrook {

class PhraseBook {
public:
    using Words = std::vector<std::string>;

    struct Phrase {
        std::string className;
        std::string text;  // as the definition has it
        Words words;
    };

    explicit PhraseBook(const IntentVocabulary& vocabulary);  // slow: loads the language's collation

    // Every intent that has the phrase: none for what nobody says, two only when a translation is wrong.
    std::set<std::string> classesSaidAs(std::string_view phrase) const;

    // The words that carry the meaning, as collation keys.
    Words wordsOf(std::string_view phrase) const;

    const std::vector<Phrase>& phrases() const { return phrases_; }

private:
    std::string keyOf(std::string_view phrase) const;
    Words keysOf(const Words& words) const;
    Words writtenOut(std::string_view phrase) const;
    Words essential(std::string_view phrase) const;
    std::size_t fillerAt(const Words& keys, std::size_t start) const;

    Collation collation_;
    std::map<std::string, std::string> shortForms_;  // key of "what's" -> "what is"
    std::vector<Words> filler_;
    std::vector<Phrase> phrases_;
    std::map<std::string, std::set<std::string>> classes_;  // by key
};

}  // namespace lunabrook
