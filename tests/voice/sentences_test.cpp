// The sentences that are shipped, in every language: broad, safe, and no sentence for two intents.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

#include "support/shipped_languages.h"
#include "support/test_device.h"
#include "voice/phrase_recognizer.h"
#include "voice/sentence_automaton.h"
#include "voice/sentence_book.h"

namespace lunabrook {
namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::SizeIs;

SentenceBook bookOf(const std::string& yaml, const std::string& language = "en") {
    auto read = sentenceFileFromText(yaml);
    const auto* damage = std::get_if<Damage>(&read);
    EXPECT_EQ(damage, nullptr) << (damage != nullptr ? std::to_string(damage->line) + ": " + damage->what : "");
    return SentenceBook({language, damage != nullptr ? SentenceFile{} : std::get<SentenceFile>(std::move(read))});
}

SentenceBook shippedBook(const std::string& language) {
    return bookOf(test::readFile(test::shippedFile(language, "Sentences.yaml")), language);
}

const SentenceBook& english() {
    static const SentenceBook book = shippedBook("en");
    return book;
}

struct Said {
    std::string className;  // empty before the first heading, "none" for what no intent answers
    std::string sentence;
};

// Lines of tests/data/sentences: "# a remark", "[ReadinessIntent]", "How ready am I?".
std::vector<Said> saidIn(const std::string& language) {
    const auto file = std::filesystem::path(LUNABROOK_TEST_DATA) / "sentences" / (language + ".txt");
    std::istringstream lines(test::readFile(file));
    std::vector<Said> said;
    std::string className;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with('[')) {
            className = line.substr(1, line.size() - 2);
        } else if (!line.empty() && !line.starts_with('#')) {
            said.push_back({className, line});
        }
    }
    return said;
}

class ShippedSentences : public testing::TestWithParam<std::string> {
protected:
    const SentenceBook book = shippedBook(GetParam());
};

TEST_P(ShippedSentences, FindTheIntentOfNaturalOnesAndNeverAnotherOne) {
    std::size_t natural = 0;
    std::size_t foreign = 0;
    std::vector<std::string> missed;
    for (const Said& said : saidIn(GetParam())) {
        const std::set<std::string> found = book.classesSaidAs(said.sentence);
        if (said.className == "none") {
            ++foreign;
            EXPECT_THAT(found, IsEmpty()) << said.sentence;
            continue;
        }
        ++natural;
        if (found.empty()) {
            missed.push_back(said.sentence);
        } else {
            EXPECT_EQ(found, std::set<std::string>{said.className}) << said.sentence;
        }
    }
    EXPECT_GE(natural, 60U);
    EXPECT_GE(foreign, 30U);
    EXPECT_LE(20 * missed.size(), natural) << testing::PrintToString(missed);
}

TEST_P(ShippedSentences, AreNeverSharedByTwoIntents) {
    for (const test::SharedSentence& shared : test::SentenceAutomaton(book.sentences().file).shortestSharedSentence()) {
        ADD_FAILURE() << "\"" << shared.sentence << "\" asks for " << testing::PrintToString(shared.classes);
    }
}

// The check above sees what it is there for, behind options, rules, orders and parts of words.
TEST(Sentences, WouldBeSeenIfTwoIntentsSharedOne) {
    const auto sharedBy = [](const std::string& one, const std::string& other) {
        const SentenceBook book = bookOf("language: en\nintents:\n  ReadinessIntent:\n    data: [{sentences: [\"" +
                                         one + "\"]}]\n  SleepFuelIntent:\n    data: [{sentences: [\"" + other +
                                         "\"]}]\nexpansion_rules: {when: \"[(at|in the)] (night|evening)[s]\"}\n");
        const auto found = test::SentenceAutomaton(book.sentences().file).shortestSharedSentence();
        for (const test::SharedSentence& shared : found) {
            EXPECT_EQ(book.classesSaidAs(shared.sentence), shared.classes) << shared.sentence;
        }
        return found.empty() ? std::string("none") : found.front().sentence;
    };
    EXPECT_EQ(sharedBy("[well] I sleep [<when>] [so] deep", "I sleep (nights|deep[ly])"), "i sleep deep");
    EXPECT_EQ(sharedBy("(deep; <when>; I sleep)", "I sleep [very] deep [in the day]"), "none");
    EXPECT_EQ(sharedBy("(deep; <when>; I sleep)", "I sleep [very] deep (in the evenings|by day)"),
              "i sleep deep in the evenings");
    EXPECT_EQ(sharedBy("light[s] off", "light [s] off"), "light off");
    EXPECT_EQ(sharedBy("light(s|ning) off", "light [s] off"), "none");
}

// Each would take longer than the world stands if beginnings were followed one by one.
TEST(Sentences, TakeNoTimeWhateverIsSaid) {
    std::string many, deep = "a";
    for (int i = 0; i < 200; ++i) {
        many += "[a][[a] a]";
        deep = i < 15 ? "([" + deep + "] [a])" : deep;
    }
    for (const std::string& sentence : {many + " b", deep + " b", std::string("([a]; [a] a; a[a]; [a]; [a]; [a]) b")}) {
        const SentenceBook book = bookOf("language: en\nintents: {ReadinessIntent: {data: [{sentences: [\"" + sentence +
                                         "\"]}]}}\nexpansion_rules: {x: \"a\"}\n");
        std::string said = "a";
        for (int i = 0; i < 499; ++i) {
            said += i % 2 == 0 ? " a" : "a";
        }
        EXPECT_THAT(book.classesSaidAs(said), IsEmpty());
        EXPECT_THAT(book.classesSaidAs("a a b"), SizeIs(1)) << sentence.substr(0, 40);
    }
    for (const char* word : {"how ready am I ", "during ", "\u00E9\u0301 ", "' ", "my sleep "}) {
        std::string said = "today what is my ";
        while (said.size() < 980) {
            said += word;
        }
        EXPECT_THAT(english().classesSaidAs(said), IsEmpty()) << word;
    }
}

class Sampler {
public:
    explicit Sampler(const SentenceFile& file) : file_(file) {}

    std::string draw(const SentenceTemplate& node) {
        std::vector<const SentenceTemplate*> parts;
        for (const SentenceTemplate& part : node.parts) {
            parts.push_back(&part);
        }
        switch (node.kind) {
            case SentenceTemplate::Kind::text:
                return node.text;
            case SentenceTemplate::Kind::rule:
                return draw(file_.rules[node.rule].body);
            case SentenceTemplate::Kind::alternatives:
                return draw(*parts[random_() % parts.size()]);
            case SentenceTemplate::Kind::permutation:
                std::shuffle(parts.begin(), parts.end(), random_);
                break;
            case SentenceTemplate::Kind::sequence:
                break;
        }
        std::string text;
        for (const SentenceTemplate* part : parts) {
            text += (node.kind == SentenceTemplate::Kind::permutation ? " " : "") + draw(*part);
        }
        return text;
    }

private:
    const SentenceFile& file_;
    std::mt19937 random_{20260610};
};

TEST_P(ShippedSentences, AreUnderstoodWhicheverIsDrawn) {
#ifdef LUNABROOK_SANITIZED
    constexpr int kDraws = 1;  // ten times as slow there, and the same code
#else
    constexpr int kDraws = 8;
#endif
    const SentenceFile& file = book.sentences().file;
    Sampler sampler(file);
    EXPECT_THAT(file.intents, SizeIs(9));
    for (const SentenceFile::Intent& intent : file.intents) {
        EXPECT_THAT(intent.entries, SizeIs(Ge(3U))) << intent.className;
        for (const SentenceFile::Entry& entry : intent.entries) {
            for (std::size_t draw = 0; draw < kDraws * entry.size(); ++draw) {
                const std::string sentence = sampler.draw(entry[draw / kDraws]);
                EXPECT_EQ(book.classesSaidAs(sentence), std::set<std::string>{intent.className}) << sentence;
                // English is understood beside every language.
                EXPECT_THAT(english().classesSaidAs(sentence), AnyOf(IsEmpty(), ElementsAre(intent.className)))
                    << sentence;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, ShippedSentences, testing::ValuesIn(test::shippedLanguages()),
                         test::nameOfLanguage);

}  // namespace
}  // namespace lunabrook
