#include "voice/sentence_template.h"

#include <algorithm>
#include <utility>

namespace lunabrook {

namespace {

using Kind = SentenceTemplate::Kind;

constexpr int kDeepestGroup = 32;
constexpr std::size_t kMostPermuted = 6;
constexpr char kEnd = 0;
constexpr std::string_view kSigns = "()[]<>{}|;";
constexpr std::string_view kSignsAndEscape = "()[]<>{}|;\\";

// One pass from the left. After the first mistake everything returns at once.
class Parser {
public:
    explicit Parser(std::string_view text) : text_(text) {}

    // What stands up to `closing`, which is read too; kEnd is the text's end.
    SentenceTemplate group(char closing) {
        SentenceTemplate first = sequence();
        if (isAtEnd() || (peek() != '|' && peek() != ';')) {
            close(closing);
            return first;
        }
        const char separator = peek();
        SentenceTemplate group;
        group.kind = separator == ';' ? Kind::permutation : Kind::alternatives;
        group.parts.push_back(std::move(first));
        while (mistake_.empty() && !isAtEnd() && (peek() == '|' || peek() == ';')) {
            if (peek() != separator) {
                fail("mixes | and ; in one group");
            }
            ++at_;
            group.parts.push_back(sequence());
        }
        close(closing);
        if (separator == ';' && group.parts.size() > kMostPermuted) {
            fail("has more than six parts in any order");
        }
        return group;
    }

    const std::string& mistake() const { return mistake_; }

private:
    SentenceTemplate sequence() {
        SentenceTemplate sequence;
        while (mistake_.empty() && !isAtEnd() && peek() != '|' && peek() != ';' && peek() != ')' && peek() != ']') {
            sequence.parts.push_back(part());
        }
        if (sequence.parts.size() == 1) {
            return SentenceTemplate(std::move(sequence.parts.front()));
        }
        return sequence;
    }

    SentenceTemplate part() {
        switch (peek()) {
            case '(':
                return nested(')');
            case '[':
                return optional();
            case '<':
                return rule();
            case '{':
                fail("has a slot: {");
                return {};
            case '>':
            case '}':
                fail(std::string("has a ") + peek() + " that closes nothing");
                return {};
            default:
                return plainText();
        }
    }

    SentenceTemplate nested(char closing) {
        ++at_;
        if (++depth_ > kDeepestGroup) {
            fail("has groups nested deeper than 32");
            return {};
        }
        if (!isAtEnd() && peek() == closing) {
            fail("has a group without words");
        }
        SentenceTemplate inner = group(closing);
        --depth_;
        return inner;
    }

    SentenceTemplate optional() {
        SentenceTemplate inner = nested(']');
        SentenceTemplate option;
        option.kind = Kind::alternatives;
        option.parts.emplace_back();
        option.parts.push_back(std::move(inner));
        return option;
    }

    SentenceTemplate rule() {
        SentenceTemplate rule;
        rule.kind = Kind::rule;
        const std::size_t end = text_.find('>', at_);
        if (end == std::string_view::npos) {
            fail("has a < that is not closed");
            return rule;
        }
        rule.text = text_.substr(at_ + 1, end - at_ - 1);
        at_ = end + 1;
        return rule;
    }

    SentenceTemplate plainText() {
        SentenceTemplate plain;
        plain.kind = Kind::text;
        while (!isAtEnd() && kSigns.find(peek()) == std::string_view::npos) {
            if (peek() == '\\' && ++at_ == text_.size()) {
                fail("ends with a \\");
                break;
            }
            const std::size_t end = std::min(text_.find_first_of(kSignsAndEscape, at_ + 1), text_.size());
            plain.text.append(text_, at_, end - at_);
            at_ = end;
        }
        return plain;
    }

    void close(char closing) {
        if (isAtEnd() && closing != kEnd) {
            fail(std::string("has a ") + (closing == ')' ? '(' : '[') + " that is not closed");
        } else if (!isAtEnd() && peek() != closing) {
            fail(std::string("has a ") + peek() + " that closes nothing");
        } else {
            ++at_;
        }
    }

    bool isAtEnd() const { return at_ >= text_.size(); }
    char peek() const { return text_[at_]; }
    void fail(std::string mistake) {
        if (mistake_.empty()) {
            mistake_ = std::move(mistake);
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
    int depth_ = 0;
    std::string mistake_;
};

}  // namespace

std::variant<SentenceTemplate, std::string> sentenceTemplateFromText(std::string_view text) {
    Parser parser(text);
    SentenceTemplate whole = parser.group(kEnd);
    if (!parser.mistake().empty()) {
        return parser.mistake();
    }
    return whole;
}

}  // namespace lunabrook
