// Sentences as they are heard: "Hey, what’s MY  SpO₂?" -> "hey whats my spo2".
//
// Two texts that sound the same come out as the same bytes: composed (NFC), case folded, each run of blanks and hyphens
// one blank, punctuation and symbols at the start and end of words gone, wide ones of East Asia anywhere, apostrophes
// gone everywhere. Accents and width are folded where the language's collation calls them variants of one letter: "ö"
// is an "o" in German, a letter of its own in Swedish.

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/text/collation.h"

namespace lunabrook {

class SpokenText {
public:
    enum class Variants {
        folded,
        kept,  // accents and width make a difference
    };

    // A BCP 47 tag. Cheap: the language's data are loaded when the first letter beyond ASCII is heard.
    explicit SpokenText(std::string language, Variants variants = Variants::folded);

    // A blank at either end stays as one, so that what is heard of a sentence's pieces can be joined.
    std::string heard(std::string_view text) const;

    Variants variants() const { return variants_; }

private:
    const std::string& variantless(char32_t letter) const;

    std::string language_;
    std::uint32_t caseFolding_;
    Variants variants_;
    mutable std::unique_ptr<Collation> collation_;
    mutable std::map<char32_t, std::string> letters_;
};

}  // namespace lunabrook
