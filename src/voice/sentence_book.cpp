#include "voice/sentence_book.h"

#include <algorithm>
#include <utility>

#include "voice/template_matcher.h"

namespace lunabrook {

namespace {

std::vector<std::string> wordsIn(std::string_view heard) {
    std::vector<std::string> words;
    for (std::size_t start = 0; start < heard.size();) {
        const std::size_t end = std::min(heard.find(' ', start), heard.size());
        if (end > start) {
            words.emplace_back(heard.substr(start, end - start));
        }
        start = end + 1;
    }
    return words;
}

std::string joined(const std::vector<std::string>& words, std::string_view between) {
    std::string text;
    for (const std::string& word : words) {
        text.append(text.empty() ? "" : between).append(word);
    }
    return text;
}

}  // namespace

SentenceBook::SentenceBook(LanguageSentences sentences, SpokenText::Variants variants)
    : sentences_(std::move(sentences)), spoken_(sentences_.language, variants) {
    for (const std::string& words : sentences_.file.skipWords) {
        skipWords_.push_back(wordsIn(spoken_.heard(words)));
    }
    // The longest first, so that "sorry" takes nothing of "sorry to ask".
    std::stable_sort(skipWords_.begin(), skipWords_.end(), [](const Words& one, const Words& other) {
        return joined(one, "").size() > joined(other, "").size();
    });
    for (SentenceFile::Rule& rule : sentences_.file.rules) {
        hear(rule.body);
    }
    for (SentenceFile::Intent& intent : sentences_.file.intents) {
        for (SentenceFile::Entry& entry : intent.entries) {
            std::for_each(entry.begin(), entry.end(), [this](SentenceTemplate& sentence) { hear(sentence); });
        }
    }
}

void SentenceBook::hear(SentenceTemplate& node) const {
    if (node.kind == SentenceTemplate::Kind::text) {
        node.heard = spoken_.heard(node.text);
        if (sentences_.file.ignoresBlanks) {
            std::erase(node.heard, ' ');
        }
    }
    for (SentenceTemplate& part : node.parts) {
        hear(part);
    }
}

std::set<std::string> SentenceBook::classesSaidAs(std::string_view sentence) const {
    const std::string said = essential(sentence);
    const TemplateMatcher matcher(sentences_.file, said);
    std::set<std::string> classes;
    for (const SentenceFile::Intent& intent : sentences_.file.intents) {
        for (const SentenceFile::Entry& entry : intent.entries) {
            if (std::any_of(entry.begin(), entry.end(),
                            [&matcher](const SentenceTemplate& whole) { return matcher.matches(whole); })) {
                classes.insert(intent.className);
                break;
            }
        }
    }
    if (classes.size() > 1 && spoken_.variants() == SpokenText::Variants::folded) {
        const std::set<std::string> exact =
            SentenceBook(sentences_, SpokenText::Variants::kept).classesSaidAs(sentence);
        return exact.empty() ? classes : exact;
    }
    return classes;
}

std::string SentenceBook::essential(std::string_view sentence) const {
    const Words words = wordsIn(spoken_.heard(sentence));
    Words left;
    for (std::size_t index = 0; index < words.size();) {
        const std::size_t length = skippedAt(words, index);
        if (length == 0) {
            left.push_back(words[index]);
        }
        index += std::max(length, std::size_t{1});
    }
    return sentences_.file.ignoresBlanks ? withoutSkippedEnds(joined(left, "")) : joined(left, " ");
}

// How many words of politeness begin there.
std::size_t SentenceBook::skippedAt(const Words& words, std::size_t start) const {
    const auto skip = std::find_if(skipWords_.begin(), skipWords_.end(), [&](const Words& candidate) {
        return !candidate.empty() && candidate.size() <= words.size() - start &&
               std::equal(candidate.begin(), candidate.end(), words.begin() + static_cast<std::ptrdiff_t>(start));
    });
    return skip != skipWords_.end() ? skip->size() : 0;
}

// A script without blanks shows where a word begins and ends at the sentence's ends alone.
std::string SentenceBook::withoutSkippedEnds(std::string text) const {
    for (bool isShorter = true; isShorter;) {
        isShorter = false;
        for (const Words& words : skipWords_) {
            const std::string skip = joined(words, "");
            if (!skip.empty() && text.starts_with(skip)) {
                text.erase(0, skip.size());
                isShorter = true;
            } else if (!skip.empty() && text.ends_with(skip)) {
                text.resize(text.size() - skip.size());
                isShorter = true;
            }
        }
    }
    return text;
}

}  // namespace lunabrook
