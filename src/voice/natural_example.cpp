#include "voice/natural_example.h"

#include "platform/text/text_case.h"

namespace lunabrook {

namespace {

using Kind = SentenceTemplate::Kind;

std::string firstChoice(const SentenceFile& file, const SentenceTemplate& node) {
    switch (node.kind) {
        case Kind::text:
            return node.text;
        case Kind::rule:
            return firstChoice(file, file.rules[node.rule].body);
        case Kind::alternatives:
            return firstChoice(file, node.parts.front());
        case Kind::sequence:
        case Kind::permutation:
            break;
    }
    std::string text;
    for (const SentenceTemplate& part : node.parts) {
        text += (node.kind == Kind::permutation && !text.empty() ? " " : "") + firstChoice(file, part);
    }
    return text;
}

// Where options were left out: "How ready am I ?" -> "How ready am I?".
std::string withoutLeftBlanks(const std::string& text) {
    std::string closed;
    for (const char byte : text) {
        const bool closesUp = std::string_view(".,?!;:").find(byte) != std::string_view::npos;
        if ((closesUp || byte == ' ') && !closed.empty() && closed.back() == ' ') {
            closed.pop_back();
        }
        if (byte != ' ' || !closed.empty()) {
            closed += byte;
        }
    }
    closed.resize(closed.find_last_not_of(' ') + 1);
    return closed;
}

}  // namespace

std::string naturalExample(const SentenceFile& file, const SentenceTemplate& sentence) {
    const SplitText split = splitAfterFirstCharacter(withoutLeftBlanks(firstChoice(file, sentence)));
    return uppercaseString(split.first) + split.rest;
}

std::vector<std::string> naturalExamples(const SentenceFile& file, const std::string& className) {
    std::vector<std::string> examples;
    for (const SentenceFile::Intent& intent : file.intents) {
        for (const SentenceFile::Entry& entry : intent.entries) {
            if (intent.className == className) {
                examples.push_back(naturalExample(file, entry.front()));
            }
        }
    }
    return examples;
}

}  // namespace lunabrook
