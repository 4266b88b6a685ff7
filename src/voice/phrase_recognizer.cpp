#include "voice/phrase_recognizer.h"

#include <algorithm>
#include <set>

#include "voice/near_examples.h"
#include "voice/sentence_book.h"

namespace lunabrook {

namespace {

constexpr std::size_t kLongestPhraseBytes = 1000;  // nobody says more in one breath

}  // namespace

Recognition recognizePhrase(const Device& device, std::string_view phrase) {
    const std::string_view said = phrase.substr(0, kLongestPhraseBytes);
    std::vector<SentenceBook> books;
    for (LanguageSentences& sentences : languageSentences(device)) {
        const SentenceBook& book = books.emplace_back(std::move(sentences));
        const std::set<std::string> classes =
            phrase.size() <= kLongestPhraseBytes ? book.classesSaidAs(said) : std::set<std::string>();
        if (classes.size() == 1) {
            return {*classes.begin(), {}};
        }
        if (!classes.empty()) {
            break;  // unclear in the device's own language
        }
    }
    return {{}, nearExamples(books, said)};
}

}  // namespace lunabrook
