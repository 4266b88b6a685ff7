#include "voice/template_rules.h"

#include <algorithm>

namespace lunabrook {

namespace {

using Kind = SentenceTemplate::Kind;

constexpr std::size_t kDeepestRule = 32;

}  // namespace

RuleResolver::RuleResolver(std::vector<SentenceFile::Rule>& rules)
    : rules_(rules), extents_(rules.size()), isOpen_(rules.size()) {
    for (std::size_t i = 0; i < rules.size(); ++i) {
        places_.emplace(rules[i].name, i);
    }
}

RuleResolver::Mistake RuleResolver::resolveRules() {
    for (std::size_t i = 0; i < rules_.size(); ++i) {
        if (std::string what = resolve(rules_[i].body); !what.empty()) {
            return {i, std::move(what)};
        }
    }
    for (std::size_t i = 0; i < rules_.size(); ++i) {
        if (std::string what = measure(i, 1); !what.empty()) {
            return {i, std::move(what)};
        }
    }
    return {};
}

std::string RuleResolver::resolve(SentenceTemplate& sentence) const {
    if (sentence.kind == Kind::rule) {
        const auto place = places_.find(sentence.text);
        if (place == places_.end()) {
            return "uses <" + sentence.text + ">, which is no rule";
        }
        sentence.rule = place->second;
    }
    for (SentenceTemplate& part : sentence.parts) {
        if (std::string what = resolve(part); !what.empty()) {
            return what;
        }
    }
    return {};
}

RuleResolver::Extent RuleResolver::extentOf(const SentenceTemplate& node) const {
    Extent extent{1, 0};
    if (node.kind == Kind::rule) {
        extent = {1 + extents_[node.rule].size, extents_[node.rule].depth};
    }
    for (const SentenceTemplate& part : node.parts) {
        const Extent inner = extentOf(part);
        extent = {extent.size + inner.size, std::max(extent.depth, inner.depth)};
    }
    // A part of a permutation is tried after every choice among the others.
    const std::size_t times = node.kind == Kind::permutation ? std::size_t{1} << (node.parts.size() - 1) : 1;
    return {std::min(extent.size * times, kMostUnfolded + 1), extent.depth};
}

std::string RuleResolver::measure(std::size_t rule, std::size_t depth) {
    if (isOpen_[rule]) {
        return "uses itself by way of <" + rules_[rule].name + ">";
    }
    if (extents_[rule].size == 0 && depth <= kDeepestRule) {
        isOpen_[rule] = true;
        if (std::string what = measureRulesIn(rules_[rule].body, depth); !what.empty()) {
            return what;
        }
        isOpen_[rule] = false;
        extents_[rule] = extentOf(rules_[rule].body);
        ++extents_[rule].depth;
    }
    return depth > kDeepestRule || extents_[rule].depth > kDeepestRule
               ? "uses rules inside one another, more than 32 deep"
               : "";
}

std::string RuleResolver::measureRulesIn(const SentenceTemplate& node, std::size_t depth) {
    if (node.kind == Kind::rule) {
        return measure(node.rule, depth + 1);
    }
    for (const SentenceTemplate& part : node.parts) {
        if (std::string what = measureRulesIn(part, depth); !what.empty()) {
            return what;
        }
    }
    return {};
}

}  // namespace lunabrook
