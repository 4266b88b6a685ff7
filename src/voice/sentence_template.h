// A sentence template, taken apart: "(how ready|how recovered) am I [<today>]".
//
//   (a|b c|d)       one of the alternatives
//   [a], [a|b]      the same, or nothing
//   (a; b)          all parts, in any order
//   <name>          a rule: the template that stands under the name in the same file
//   light[s]        a group inside a word
//   \( \[ \| ...    the character itself

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lunabrook {

struct SentenceTemplate {
    enum class Kind {
        text,
        rule,
        sequence,      // of all parts, one after another; without parts it is nothing
        alternatives,  // one of the parts; of an option the first one is nothing
        permutation,   // all parts in any order, a blank between them
    };

    Kind kind = Kind::sequence;
    std::string text;      // as it is written; of a rule, its name
    std::string heard;     // of a text, as the file's language hears it; filled in by who knows the language
    std::size_t rule = 0;  // its place among the file's rules; filled in by who knows them
    std::vector<SentenceTemplate> parts;
};

// Or what is wrong with it: "has a ( that is not closed". A slot ({name}) is refused, a group nested deeper than 32,
// and a permutation of more than six parts, since its orders are all tried.
std::variant<SentenceTemplate, std::string> sentenceTemplateFromText(std::string_view text);

}  // namespace lunabrook
