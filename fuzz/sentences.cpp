// A sentence in the first line, what may be said below it: a file of sentences, or a template a line. Without anything
// below it, what is shipped is asked.

#include "fuzz.h"
#include "voice/natural_example.h"
#include "voice/sentence_book.h"

#ifndef LUNABROOK_RESOURCES
#error "the folder with the shipped sentences"
#endif

namespace lunabrook {
namespace {

using fuzz::require;

std::string fileWith(std::string_view templates) {
    std::string yaml = "language: en\nintents:\n  ReadinessIntent:\n    data:\n      - sentences:\n";
    while (!templates.empty()) {
        const std::size_t end = std::min(templates.find('\n'), templates.size());
        yaml += "          - '";
        for (const char character : templates.substr(0, end)) {
            yaml += character == '\'' ? "''" : std::string(1, character);
        }
        yaml += "'\n";
        templates.remove_prefix(std::min(end + 1, templates.size()));
    }
    return yaml + "expansion_rules:\n  a: '(a|b)[c]'\n  b: '<a> <a>'\nskip_words: ['please', 'hey you']\n";
}

constexpr const char* kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 ";

void requireExamples(const SentenceBook& book) {
    const SentenceFile& file = book.sentences().file;
    for (const SentenceFile::Intent& intent : file.intents) {
        for (const SentenceFile::Entry& entry : intent.entries) {
            // Marks and punctuation melt into what stands beside them in the sentence, and not in a template's part;
            // of a template with words of politeness they are missed.
            const std::string example = naturalExample(file, entry.front());
            const bool isPlain = !example.empty() && example.find_first_not_of(kPlain) == std::string::npos &&
                                 book.essential(example).size() == example.size();
            require(!isPlain || book.classesSaidAs(example).contains(intent.className), "an example is understood");
        }
    }
}

void say(const SentenceBook& book, std::string_view sentence) {
    const std::string essential = book.essential(sentence);
    require(book.essential(essential).size() <= essential.size(), "what is essential gets no longer");
    require(!essential.empty() || book.classesSaidAs(sentence).empty(), "who says nothing asks for nothing");
}

const SentenceBook& shipped() {
    static const SentenceBook book = [] {
        std::ifstream stream(LUNABROOK_RESOURCES "/en.lproj/Sentences.yaml", std::ios::binary);
        const std::string yaml(std::istreambuf_iterator<char>(stream), {});
        SentenceBook made({"en", std::get<SentenceFile>(sentenceFileFromText(yaml))});
        requireExamples(made);
        return made;
    }();
    return book;
}

void test(std::string_view bytes) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    const std::string_view sentence = bytes.substr(0, end);
    const std::string_view below = bytes.substr(std::min(end + 1, bytes.size()));
    if (below.empty()) {
        say(shipped(), sentence);
        return;
    }
    const auto file = sentenceFileFromText(below.starts_with("language:") ? std::string(below) : fileWith(below));
    if (const auto* sentences = std::get_if<SentenceFile>(&file)) {
        for (const SentenceBook& book :
             {SentenceBook({"en", *sentences}), SentenceBook({"sv", *sentences}, SpokenText::Variants::kept)}) {
            // Parts in any order are words, also where the template has no blank between them.
            if (below.find(';') == std::string_view::npos) {
                requireExamples(book);
            }
            say(book, sentence);
        }
    } else {
        require(!std::get<Damage>(file).what.empty(), "damage says what is wrong");
    }
}

}  // namespace
}  // namespace lunabrook

LUNABROOK_FUZZ_TARGET(lunabrook::test)
