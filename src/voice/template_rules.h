// Rules found by their names, and what keeps them from unfolding without end.

#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "voice/sentence_file.h"

namespace lunabrook {

// Hearing a sentence takes time that grows with the unfolded size of all templates, so that size is bounded.
inline constexpr std::size_t kMostUnfolded = 200'000;

class RuleResolver {
public:
    struct Mistake {
        std::size_t rule = 0;
        std::string what;  // "uses <today>, which is no rule"; empty when there is none
    };

    // `rules` outlive the resolver.
    explicit RuleResolver(std::vector<SentenceFile::Rule>& rules);

    // Fills in places in every rule. Mistakes: an unknown name, a rule that uses itself, more than 32 rules inside one
    // another. Before the sentences.
    Mistake resolveRules();

    // The same in one sentence.
    std::string resolve(SentenceTemplate& sentence) const;

    // In pieces with all rules unfolded, none counted beyond the bound. Of what is resolved.
    std::size_t unfoldedSize(const SentenceTemplate& sentence) const { return extentOf(sentence).size; }

private:
    struct Extent {
        std::size_t size = 0;   // 0: not measured
        std::size_t depth = 0;  // rules inside one another
    };

    Extent extentOf(const SentenceTemplate& node) const;
    std::string measure(std::size_t rule, std::size_t depth);
    std::string measureRulesIn(const SentenceTemplate& node, std::size_t depth);

    std::vector<SentenceFile::Rule>& rules_;
    std::map<std::string_view, std::size_t> places_;
    std::vector<Extent> extents_;  // of the rules
    std::vector<bool> isOpen_;     // rules that are being measured
};

}  // namespace lunabrook
