// Texts compared as they are heard: without case, accents, punctuation and blanks, by the collation of a language.
//
//   const Collation english("en");
//   english.key("How ready am I today?") == english.key("höw READY am i today")

#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lunabrook {

class Collation {
public:
    // A BCP 47 tag; an unknown one is compared as most languages are. What is an accent is the language's own matter:
    // "ö" is an "o" in German, a letter of its own in Swedish. Slow: loads the language's data.
    explicit Collation(const std::string& language);
    ~Collation();
    Collation(const Collation&) = delete;
    Collation& operator=(const Collation&) = delete;

    // Bytes that are equal for texts that sound the same. Symbols count as little as punctuation; empty when the text
    // holds nothing else.
    std::string key(std::string_view text) const;

    // In their order, as written; "what's" is one. What has no key is no word.
    std::vector<std::string> words(std::string_view text) const;

private:
    struct Data;
    std::unique_ptr<Data> data_;
};

}  // namespace lunabrook
