#include "voice/near_examples.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "platform/text/collation.h"
#include "platform/text/near_names.h"
#include "voice/natural_example.h"

namespace lunabrook {

namespace {

constexpr std::size_t kMostNear = 3;
constexpr double kLeastNearness = 0.25;

using Words = std::vector<std::string>;  // as collation keys

struct Example {
    std::string className;
    std::string text;
    Words words;
    double nearness = 0.0;
};

// 1 for the same word, 0 for words further apart than a slip in every fourth letter.
double likeness(const std::string& left, const std::string& right) {
    constexpr double kLeast = 0.75;
    const auto [shorter, longer] = std::minmax({left.size(), right.size()});
    const auto length = static_cast<double>(longer);
    if (static_cast<double>(shorter) < kLeast * length) {
        return 0.0;
    }
    const double same = 1.0 - static_cast<double>(editDistance(left, right)) / length;
    return same < kLeast ? 0.0 : same;
}

// What the words of a language's examples are worth: "readiness", which two examples have, more than "what", which ten
// have; a word that none has, 1.
class Weights {
public:
    Weights(const std::vector<Example>& examples, const Words& said) : said_(said) {
        std::map<std::string, double> uses;
        for (const Example& example : examples) {
            for (const std::string& word : example.words) {
                uses[word] += 1.0;
            }
        }
        for (const auto& [word, count] : uses) {
            double best = 0.0;
            for (const std::string& other : said) {
                best = std::max(best, likeness(word, other));
            }
            worth_[word] = {1.0 / std::sqrt(count), best};
        }
    }

    // From 0 to 1: the weight of the example's words that were said, against that of all its words and of all that was
    // said.
    double nearness(const Words& example) const {
        double shared = 0.0;
        double all = 0.0;
        for (const std::string& word : example) {
            const Worth& worth = worth_.at(word);
            shared += worth.weight * worth.likeness;
            all += worth.weight;
        }
        for (const std::string& word : said_) {
            const auto worth = worth_.find(word);
            all += worth != worth_.end() ? worth->second.weight : 1.0;
        }
        return all > 0.0 ? 2.0 * shared / all : 0.0;
    }

private:
    struct Worth {
        double weight = 0.0;
        double likeness = 0.0;  // to the nearest word that was said
    };
    const Words& said_;
    std::map<std::string, Worth> worth_;
};

Words keysOf(const Collation& collation, std::string_view text) {
    Words keys;
    for (const std::string& word : collation.words(text)) {
        keys.push_back(collation.key(word));
    }
    return keys;
}

std::vector<Example> examplesOf(const SentenceBook& book, std::string_view said) {
    const LanguageSentences& sentences = book.sentences();
    const Collation collation(sentences.language);
    std::vector<Example> examples;
    for (const SentenceFile::Intent& intent : sentences.file.intents) {
        for (const std::string& text : naturalExamples(sentences.file, intent.className)) {
            examples.push_back({intent.className, text, keysOf(collation, book.essential(text)), 0.0});
        }
    }
    const Words words = keysOf(collation, book.essential(said));
    const Weights weights(examples, words);
    for (Example& example : examples) {
        example.nearness = weights.nearness(example.words);
    }
    return examples;
}

}  // namespace

std::vector<std::string> nearExamples(const std::vector<SentenceBook>& books, std::string_view said) {
    std::vector<Example> examples;
    for (const SentenceBook& book : books) {
        const std::vector<Example> more = examplesOf(book, said);
        examples.insert(examples.end(), more.begin(), more.end());
    }
    std::stable_sort(examples.begin(), examples.end(),
                     [](const Example& a, const Example& b) { return a.nearness > b.nearness; });
    std::vector<std::string> nearest;
    std::set<std::string> classes;
    for (const Example& example : examples) {
        if (nearest.size() < kMostNear && example.nearness >= kLeastNearness &&
            classes.insert(example.className).second) {
            nearest.push_back(example.text);
        }
    }
    return nearest;
}

}  // namespace lunabrook
