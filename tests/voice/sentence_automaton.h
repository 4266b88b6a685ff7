// Every sentence that the templates of a file mean, as one automaton, to find those that two intents share.
//
// States are places in the unfolded templates. A breadth-first walk over sets of them sees every beginning that two
// intents have in common, once, and so finds the shortest sentence that both mean, or that there is none.

#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "voice/sentence_file.h"

namespace lunabrook::test {

struct SharedSentence {
    std::string sentence;  // as it is heard
    std::set<std::string> classes;
};

class SentenceAutomaton {
public:
    // `file` is heard already.
    explicit SentenceAutomaton(const SentenceFile& file) : file_(file) {
        for (std::size_t intent = 0; intent < file.intents.size(); ++intent) {
            owner_ = static_cast<int>(intent);
            const int end = newState();
            ends_.insert(end);
            for (const SentenceFile::Entry& entry : file.intents[intent].entries) {
                for (const SentenceTemplate& sentence : entry) {
                    beginnings_.push_back(built(sentence, end));
                }
            }
        }
    }

    std::vector<SharedSentence> shortestSharedSentence() const {
        std::set<Place> known;
        std::vector<std::pair<Place, std::string>> reached = {{{closed(beginnings_, true), true}, ""}};
        for (std::size_t next = 0; next < reached.size(); ++next) {
            const auto [place, said] = reached[next];
            if (const std::set<std::string> classes = classesEndingAt(place); classes.size() > 1) {
                return {{said, classes}};
            }
            for (const auto& [letter, states] : steps(place)) {
                Place then{closed(states, letter == ' '), letter == ' '};
                if (ownersOf(then.first).size() > 1 && known.insert(then).second) {
                    reached.emplace_back(std::move(then), said + letter);
                }
            }
        }
        return {};
    }

private:
    using States = std::vector<int>;        // ascending
    using Place = std::pair<States, bool>;  // whether a blank or nothing was said before it
    static constexpr char kSilent = 0;
    struct State {
        int owner = 0;
        std::vector<std::pair<char, int>> edges;
    };

    int newState() {
        states_.push_back({owner_, {}});
        return static_cast<int>(states_.size()) - 1;
    }
    int newState(char label, int next) {
        const int state = newState();
        states_[static_cast<std::size_t>(state)].edges.emplace_back(label, next);
        return state;
    }
    const State& at(int state) const { return states_[static_cast<std::size_t>(state)]; }

    int built(const SentenceTemplate& node, int next) {
        switch (node.kind) {
            case SentenceTemplate::Kind::text:
                for (auto letter = node.heard.rbegin(); letter != node.heard.rend(); ++letter) {
                    next = newState(*letter, next);
                }
                return next;
            case SentenceTemplate::Kind::rule:
                return built(file_.rules[node.rule].body, next);
            case SentenceTemplate::Kind::sequence:
                for (auto part = node.parts.rbegin(); part != node.parts.rend(); ++part) {
                    next = built(*part, next);
                }
                return next;
            case SentenceTemplate::Kind::permutation:
                return builtInAnyOrder(node, 0, next);
            case SentenceTemplate::Kind::alternatives:
                break;
        }
        const int fork = newState();
        for (const SentenceTemplate& part : node.parts) {
            const int start = built(part, next);
            states_[static_cast<std::size_t>(fork)].edges.emplace_back(kSilent, start);
        }
        return fork;
    }

    int builtInAnyOrder(const SentenceTemplate& node, unsigned said, int next) {
        const int fork = newState();
        for (std::size_t part = 0; part < node.parts.size(); ++part) {
            if (const unsigned then = said | (1U << part); then != said) {
                const bool isLast = then == (1U << node.parts.size()) - 1;
                const int after = isLast ? next : newState(' ', builtInAnyOrder(node, then, next));
                const int start = built(node.parts[part], after);
                states_[static_cast<std::size_t>(fork)].edges.emplace_back(kSilent, start);
            }
        }
        return fork;
    }

    // With all that is reached in silence; a template's blank is silent at a border of words.
    States closed(const States& states, bool isBorder) const {
        std::set<int> all(states.begin(), states.end());
        for (States left(all.begin(), all.end()); !left.empty();) {
            const int state = left.back();
            left.pop_back();
            for (const auto& [label, next] : at(state).edges) {
                if ((label == kSilent || (label == ' ' && isBorder)) && all.insert(next).second) {
                    left.push_back(next);
                }
            }
        }
        return {all.begin(), all.end()};
    }

    std::map<char, States> steps(const Place& place) const {
        std::map<char, States> steps;
        for (const int state : place.first) {
            for (const auto& [label, next] : at(state).edges) {
                if (label != kSilent && !(label == ' ' && place.second)) {
                    steps[label].push_back(next);
                }
            }
        }
        return steps;
    }

    std::set<std::string> classesEndingAt(const Place& place) const {
        std::set<std::string> classes;
        for (const int state : place.second ? States() : closed(place.first, true)) {
            if (ends_.contains(state)) {
                classes.insert(file_.intents[static_cast<std::size_t>(at(state).owner)].className);
            }
        }
        return classes;
    }

    std::set<int> ownersOf(const States& states) const {
        std::set<int> owners;
        for (const int state : states) {
            owners.insert(at(state).owner);
        }
        return owners;
    }

    const SentenceFile& file_;
    std::vector<State> states_;
    States beginnings_;
    std::set<int> ends_;
    int owner_ = 0;
};

}  // namespace lunabrook::test
