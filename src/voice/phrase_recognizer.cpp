#include "voice/phrase_recognizer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "voice/near_names.h"
#include "voice/phrase_book.h"

namespace lunabrook {

namespace {

constexpr std::size_t kLongestPhraseBytes = 1000;  // nobody says more in one breath
constexpr std::size_t kMostNear = 3;

using Books = std::array<PhraseBook, 2>;  // the device's language, English

std::string classSaidAs(const Books& books, std::string_view phrase) {
    for (const PhraseBook& book : books) {
        const std::set<std::string> classes = book.classesSaidAs(phrase);
        if (!classes.empty()) {
            return classes.size() == 1 ? *classes.begin() : std::string();
        }
    }
    return {};
}

// 1 for the same word, 0 for words further apart than a slip in every fourth letter.
double likeness(const std::string& left, const std::string& right) {
    constexpr double kLeast = 0.75;
    const auto length = static_cast<double>(std::max(left.size(), right.size()));
    const double same = 1.0 - static_cast<double>(editDistance(left, right)) / length;
    return same < kLeast ? 0.0 : same;
}

// How much a word says: "readiness", which two phrases have, more than "what", which ten have; a word that none has, 1.
using Weights = std::map<std::string, double>;

Weights weightsOf(const std::vector<PhraseBook::Phrase>& phrases) {
    Weights weights;
    for (const PhraseBook::Phrase& phrase : phrases) {
        for (const std::string& word : phrase.words) {
            weights[word] += 1.0;
        }
    }
    for (auto& [word, weight] : weights) {
        weight = 1.0 / std::sqrt(weight);
    }
    return weights;
}

// From 0 to 1: the weight of the phrase's words that were said, against that of all its words and of all that was said.
double nearness(const PhraseBook::Words& phrase, const PhraseBook::Words& said, const Weights& weights) {
    double shared = 0.0;
    double all = 0.0;
    for (const std::string& word : phrase) {
        double best = 0.0;
        for (const std::string& other : said) {
            best = std::max(best, likeness(word, other));
        }
        shared += best * weights.at(word);
        all += weights.at(word);
    }
    for (const std::string& word : said) {
        const auto weight = weights.find(word);
        all += weight != weights.end() ? weight->second : 1.0;
    }
    return all > 0.0 ? 2.0 * shared / all : 0.0;
}

struct Near {
    double nearness = 0.0;
    PhraseBook::Phrase phrase;
};

void addNear(std::vector<Near>& near, const PhraseBook& book, std::string_view said) {
    const Weights weights = weightsOf(book.phrases());
    const PhraseBook::Words words = book.wordsOf(said);
    for (const PhraseBook::Phrase& phrase : book.phrases()) {
        near.push_back({nearness(phrase.words, words, weights), phrase});
    }
}

// A phrase for each of the nearest intents: three ways to ask for one of them would hide the others.
std::vector<std::string> nearestPhrases(const Books& books, std::string_view said) {
    std::vector<Near> near;
    for (const PhraseBook& book : books) {
        addNear(near, book, said.substr(0, kLongestPhraseBytes));
    }
    std::stable_sort(near.begin(), near.end(), [](const Near& a, const Near& b) { return a.nearness > b.nearness; });
    std::vector<std::string> nearest;
    std::set<std::string> classes;
    for (const Near& candidate : near) {
        if (nearest.size() < kMostNear && classes.insert(candidate.phrase.className).second) {
            nearest.push_back(candidate.phrase.text);
        }
    }
    return nearest;
}

}  // namespace

Recognition recognizePhrase(const Device& device, std::string_view phrase) {
    const IntentVocabulary english = englishVocabulary(device);
    const Books books{PhraseBook(translatedVocabulary(device, english)), PhraseBook(english)};
    if (phrase.size() <= kLongestPhraseBytes) {
        if (std::string className = classSaidAs(books, phrase); !className.empty()) {
            return {std::move(className), {}};
        }
    }
    return {{}, nearestPhrases(books, phrase)};
}

}  // namespace lunabrook
