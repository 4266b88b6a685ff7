#include "voice/template_matcher.h"

#include <algorithm>
#include <utility>

namespace lunabrook {

namespace {

using Kind = SentenceTemplate::Kind;

}  // namespace

bool TemplateMatcher::matches(const SentenceTemplate& whole) const {
    const Places ends = after(whole, {0});
    return !sentence_.empty() && !ends.empty() && ends.back() == sentence_.size();
}

TemplateMatcher::Places TemplateMatcher::after(const SentenceTemplate& node, const Places& starts) const {
    if (starts.empty()) {
        return {};
    }
    switch (node.kind) {
        case Kind::text:
            return afterText(node.heard, starts);
        case Kind::rule:
            return starts.size() == 1 && starts.front() == 0 ? afterOpening(node.rule)
                                                             : after(file_.rules[node.rule].body, starts);
        case Kind::sequence:
            return afterSequence(node, starts);
        case Kind::alternatives:
            return afterAlternatives(node, starts);
        case Kind::permutation:
            return afterPermutation(node, starts);
    }
    return {};
}

const TemplateMatcher::Places& TemplateMatcher::afterOpening(std::size_t rule) const {
    if (!opened_[rule]) {
        opened_[rule] = after(file_.rules[rule].body, {0});
    }
    return *opened_[rule];
}

bool TemplateMatcher::isAtBorder(std::size_t place) const {
    return place == 0 || place == sentence_.size() || sentence_[place - 1] == ' ';
}

TemplateMatcher::Places TemplateMatcher::afterText(std::string_view heard, const Places& starts) const {
    const auto endOf = [this, heard](std::size_t place) -> std::optional<std::size_t> {
        std::string_view left = heard;
        while (!left.empty()) {
            if (place < sentence_.size() && sentence_[place] == left.front()) {
                ++place;
            } else if (left.front() != ' ' || !isAtBorder(place)) {
                return std::nullopt;
            }
            left.remove_prefix(1);
        }
        return place;
    };
    Places ends;
    for (const std::size_t start : starts) {
        if (const auto end = endOf(start); end && (ends.empty() || ends.back() < *end)) {
            ends.push_back(*end);
        }
    }
    return ends;
}

TemplateMatcher::Places TemplateMatcher::afterSequence(const SentenceTemplate& node, const Places& starts) const {
    Places places = starts;
    for (const SentenceTemplate& part : node.parts) {
        if (places.empty()) {
            break;
        }
        places = after(part, places);
    }
    return places;
}

TemplateMatcher::Places TemplateMatcher::afterAlternatives(const SentenceTemplate& node, const Places& starts) const {
    Places ends;
    for (const SentenceTemplate& part : node.parts) {
        const Places more = after(part, starts);
        ends.insert(ends.end(), more.begin(), more.end());
    }
    std::sort(ends.begin(), ends.end());
    ends.erase(std::unique(ends.begin(), ends.end()), ends.end());
    return ends;
}

// By the set of parts that were said so far, a bit for each.
TemplateMatcher::Places TemplateMatcher::afterPermutation(const SentenceTemplate& node, const Places& starts) const {
    const std::size_t all = (std::size_t{1} << node.parts.size()) - 1;
    const std::string_view blank = file_.ignoresBlanks ? "" : " ";
    std::vector<Places> said(all + 1);
    said[0] = starts;
    for (std::size_t parts = 0; parts < all; ++parts) {
        std::sort(said[parts].begin(), said[parts].end());
        said[parts].erase(std::unique(said[parts].begin(), said[parts].end()), said[parts].end());
        const Places next = parts == 0 ? said[parts] : afterText(blank, said[parts]);
        for (std::size_t part = 0; part < node.parts.size(); ++part) {
            if ((parts & (std::size_t{1} << part)) == 0) {
                const Places ends = after(node.parts[part], next);
                Places& then = said[parts | (std::size_t{1} << part)];
                then.insert(then.end(), ends.begin(), ends.end());
            }
        }
    }
    std::sort(said[all].begin(), said[all].end());
    said[all].erase(std::unique(said[all].begin(), said[all].end()), said[all].end());
    return std::move(said[all]);
}

}  // namespace lunabrook
