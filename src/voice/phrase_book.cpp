#include "voice/phrase_book.h"

#include <algorithm>
#include <iterator>

namespace lunabrook {

namespace {

std::vector<std::string> partsBetween(char separator, const std::string& text) {
    std::vector<std::string> parts;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

}  // namespace

PhraseBook::PhraseBook(const IntentVocabulary& vocabulary) : collation_(vocabulary.language) {
    for (const std::string& entry : partsBetween(',', vocabulary.contractions)) {
        const std::vector<std::string> forms = partsBetween('=', entry);
        if (forms.size() == 2) {
            shortForms_.emplace(collation_.key(forms[0]), forms[1]);
        }
    }
    for (const std::string& entry : partsBetween(',', vocabulary.filler)) {
        filler_.push_back(keysOf(writtenOut(entry)));
    }
    for (const IntentDefinition& intent : vocabulary.intents) {
        for (const std::string& text : intent.phrases) {
            phrases_.push_back({intent.className, text, wordsOf(text)});
            classes_[keyOf(text)].insert(intent.className);
        }
    }
    classes_.erase(std::string());  // nothing but politeness
}

std::set<std::string> PhraseBook::classesSaidAs(std::string_view phrase) const {
    const auto found = classes_.find(keyOf(phrase));
    return found != classes_.end() ? found->second : std::set<std::string>();
}

PhraseBook::Words PhraseBook::wordsOf(std::string_view phrase) const { return keysOf(essential(phrase)); }

// Of the words together, so that "goodnight" is "good night".
std::string PhraseBook::keyOf(std::string_view phrase) const {
    std::string text;
    for (const std::string& word : essential(phrase)) {
        text += word + " ";
    }
    return collation_.key(text);
}

PhraseBook::Words PhraseBook::keysOf(const Words& words) const {
    Words keys;
    std::transform(words.begin(), words.end(), std::back_inserter(keys),
                   [this](const std::string& word) { return collation_.key(word); });
    return keys;
}

PhraseBook::Words PhraseBook::writtenOut(std::string_view phrase) const {
    Words words;
    for (const std::string& word : collation_.words(phrase)) {
        const auto form = shortForms_.find(collation_.key(word));
        if (form == shortForms_.end()) {
            words.push_back(word);
        } else {
            const Words written = collation_.words(form->second);
            words.insert(words.end(), written.begin(), written.end());
        }
    }
    return words;
}

PhraseBook::Words PhraseBook::essential(std::string_view phrase) const {
    const Words words = writtenOut(phrase);
    const Words keys = keysOf(words);
    Words left;
    for (std::size_t index = 0; index < words.size();) {
        const std::size_t length = fillerAt(keys, index);
        if (length == 0) {
            left.push_back(words[index]);
        }
        index += std::max(length, std::size_t{1});
    }
    return left;
}

// How many words of politeness begin there; the longest that fits.
std::size_t PhraseBook::fillerAt(const Words& keys, std::size_t start) const {
    std::size_t longest = 0;
    for (const Words& filler : filler_) {
        if (filler.size() > longest && filler.size() <= keys.size() - start &&
            std::equal(filler.begin(), filler.end(), keys.begin() + static_cast<std::ptrdiff_t>(start))) {
            longest = filler.size();
        }
    }
    return longest;
}

}  // namespace lunabrook
