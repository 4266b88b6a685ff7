// Spoken phrases against the definitions that are shipped, in English and on a German device.

#include "host/phrase_recognizer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "host/intent_definitions.h"
#include "host/phrase_book.h"
#include "intents/intent_dispatch.h"
#include "platform/string_table.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

using test::readFile;
using test::TestDevice;
using test::writeFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

std::string shipped(const std::string& name) { return readFile(std::filesystem::path(LUNABROOK_RESOURCES) / name); }

const char* const kFiller =
    "please, hey, hi, hello, okay, ok, Lunabrook, can you, could you, would you, will you, tell me, show me, "
    "let me know, do you know, I want to know, I would like to know, thanks, thank you";
const char* const kShortForms =
    "what's = what is, how's = how is, how're = how are, when's = when is, I'm = I am, I'd = I would";

const std::string kGermanTable = "\"" + std::string(kFiller) +
                                 "\" = \"bitte, hallo, kannst du mir, sagen, danke\";\n"
                                 "\"" +
                                 kShortForms +
                                 "\" = \"wie's = wie ist\";\n"
                                 "\"Lights off\" = \"Licht aus\";\n"
                                 "\"Readiness\" = \"Bereitschaft\";\n"
                                 "\"How ready am I today?\" = \"Wie bereit bin ich heute?\";\n"
                                 "\"What is my readiness?\" = \"Wie ist meine Bereitschaft?\";\n"
                                 "\"How are my sleep rings?\" = \"Wie schön sind meine Schlafringe?\";\n"
                                 "\"Good night\" = \"Gute Nacht\";\n"
                                 "\"What is my SpO2?\" = \"Good night\";\n";  // English for lights off

class Phrases : public testing::Test {
protected:
    void SetUp() override { writeFile(english_.folder() / "bundle/Intents.json", shipped("Intents.json")); }

    std::string found(const std::string& phrase) { return recognizePhrase(english_, phrase).className; }
    std::vector<std::string> nearest(const std::string& phrase) { return recognizePhrase(english_, phrase).nearest; }

    TestDevice english_;
};

TEST_F(Phrases, EveryPhraseFindsItsOwnIntentAlone) {
    const IntentVocabulary vocabulary = englishVocabulary(english_);
    ASSERT_THAT(vocabulary.intents, SizeIs(9));
    const PhraseBook book(vocabulary);
    std::set<std::string> classes;
    for (const IntentDefinition& intent : vocabulary.intents) {
        classes.insert(intent.className);
        EXPECT_TRUE(intent.phrases.size() >= 4 && intent.phrases.size() <= 6) << intent.className;
        EXPECT_EQ(intent.successTemplate, "${response}");
        EXPECT_THAT(intent.responseParameters, SizeIs(intent.className == "LightsOffIntent" ? 1 : 2));
        for (const std::string& phrase : intent.phrases) {
            EXPECT_EQ(found(phrase), intent.className) << phrase;
            EXPECT_THAT(book.classesSaidAs(phrase), ElementsAre(intent.className)) << phrase;
        }
    }
    EXPECT_THAT(classes, SizeIs(9));
}

TEST_F(Phrases, AreHeardWithoutCaseAccentsPunctuationAndPoliteness) {
    const std::pair<const char*, const char*> rows[] = {
        {"how ready am i today", "ReadinessIntent"},
        {"HOW READY AM I TODAY?!", "ReadinessIntent"},
        {"H\u00F6w r\u00E9ady am I t\u00F4day", "ReadinessIntent"},
        {"How\u00A0ready  am\tI \u2013 today \U0001F634?", "ReadinessIntent"},
        {"please tell me how ready I am today", "ReadinessIntent"},
        {"Hey Lunabrook, could you please tell me: how ready am I today? Thanks!", "ReadinessIntent"},
        {"what's my readiness", "ReadinessIntent"},
        {"Whats my readiness, please?", "ReadinessIntent"},
        {"What\u2019s my SpO\u2082?", "SleepSpO2Intent"},
        {"I am going to bed", "LightsOffIntent"},
        {"im going to bed", "LightsOffIntent"},
        {"I'd like to know how well did I sleep", "SleepRingsIntent"},
        {"okay, goodnight", "LightsOffIntent"},
    };
    for (const auto& [phrase, className] : rows) {
        EXPECT_EQ(found(phrase), className) << phrase;
    }
}

TEST_F(Phrases, NearMissesFindNone) {
    const std::string rows[] = {
        "How ready is my dinner?",
        "lights on",
        "what is my blood pressure?",
        "",
        "   ",
        "ready",
        "?!... \u2026 \u3002",
        "please tell me",
        "How ready am I today or tomorrow?",
        "today I am ready how",
        "Good night, how ready am I today?",
        "xxHow ready am I today?",
        std::string("Lights off\0 not", 15),
        "\xFF\xFE lights",
        "Lights off" + std::string(1 << 20, ' ') + "tomorrow",
        std::string(1 << 20, 'a'),
    };
    for (const std::string& phrase : rows) {
        const Recognition recognition = recognizePhrase(english_, phrase);
        EXPECT_EQ(recognition.className, "") << phrase.substr(0, 40);
        EXPECT_THAT(recognition.nearest, SizeIs(3)) << phrase.substr(0, 40);
    }
}

TEST_F(Phrases, TheNearestShareTheWordsThatSaySomething) {
    EXPECT_EQ(nearest("How ready is my dinner?").front(), "How ready am I?");
    EXPECT_EQ(nearest("lights on").front(), "Lights off");
    EXPECT_EQ(nearest("what is my blood pressure?").front(), "What is my blood oxygen?");
    EXPECT_EQ(nearest("Was ist meine readyness").front(), "What is my readiness?") << "a slip of the finger";
    EXPECT_EQ(nearest("bedtime").front(), "When is my bedtime?");
    EXPECT_EQ(nearest("How did I sleep?").front(), "How long did I sleep?") << "\"now\" is not nearly \"how\"";
}

TEST_F(Phrases, AreKnownInTheLanguageOfTheDeviceAndInEnglish) {
    TestDevice german({.languages = {"de-AT"}});
    writeFile(german.folder() / "bundle/Intents.json", shipped("Intents.json"));
    std::filesystem::remove_all(german.folder() / "bundle/de-AT.lproj");
    writeFile(german.folder() / "bundle/de.lproj/Intents.strings", kGermanTable);
    const std::pair<const char*, const char*> rows[] = {
        {"Licht aus!", "LightsOffIntent"},
        {"lights off", "LightsOffIntent"},
        {"WIE BEREIT BIN ICH HEUTE", "ReadinessIntent"},
        {"Kannst du mir bitte sagen: Wie bereit bin ich heute?", "ReadinessIntent"},
        {"Wie's meine Bereitschaft?", "ReadinessIntent"},
        {"wie schon sind meine schlafringe", "SleepRingsIntent"},
        {"please tell me how ready I am today", "ReadinessIntent"},
        {"Good night", "SleepSpO2Intent"},  // the device's language goes before English
        {"Wie bereit ist mein Essen?", ""},
        {"Licht an", ""},
    };
    for (const auto& [phrase, className] : rows) {
        EXPECT_EQ(recognizePhrase(german, phrase).className, className) << phrase;
    }
    EXPECT_EQ(recognizePhrase(german, "Licht an").nearest.front(), "Licht aus");
    EXPECT_EQ(intentDefinitions(german)[2].title, "Bereitschaft");
    EXPECT_TRUE(german.faults().empty());
}

TEST_F(Phrases, ThatATranslationGivesToTwoIntentsAreUnclear) {
    TestDevice german({.languages = {"de"}});
    writeFile(german.folder() / "bundle/Intents.json", shipped("Intents.json"));
    writeFile(german.folder() / "bundle/de.lproj/Intents.strings",
              R"("How ready am I?" = "Und jetzt?"; "How well did I sleep?" = "und Jetzt"; "Lights out" = "Danke, bitte";
                 "please" = "x";)");
    EXPECT_EQ(recognizePhrase(german, "Und jetzt?").className, "");
    EXPECT_EQ(recognizePhrase(german, "Lights off").className, "LightsOffIntent");
}

// What is a letter of its own in a language is no accent there.
TEST_F(Phrases, FollowTheCollationOfTheirLanguage) {
    TestDevice swedish({.languages = {"sv"}});
    writeFile(swedish.folder() / "bundle/Intents.json", shipped("Intents.json"));
    writeFile(swedish.folder() / "bundle/sv.lproj/Intents.strings", "\"Lights off\" = \"Sl\u00E4ck id\u00E9n\";");
    EXPECT_EQ(recognizePhrase(swedish, "sl\u00E4ck iden").className, "LightsOffIntent");
    EXPECT_EQ(recognizePhrase(swedish, "slack iden").className, "");
    TestDevice turkish({.languages = {"tr"}});
    writeFile(turkish.folder() / "bundle/Intents.json", shipped("Intents.json"));
    writeFile(turkish.folder() / "bundle/tr.lproj/Intents.strings", "\"Lights off\" = \"\u0131\u015F\u0131k\";");
    EXPECT_EQ(recognizePhrase(turkish, "I\u015EIK").className, "LightsOffIntent");
}

TEST_F(Phrases, OfADamagedResourceAreAFaultAndUnclear) {
    const std::string whole = shipped("Intents.json");
    const auto with = [&whole](const std::string& what, const std::string& by) {
        std::string changed = whole;
        return changed.replace(changed.find(what), what.size(), by);
    };
    const std::pair<std::string, const char*> rows[] = {
        {"", "is not JSON"},
        {"null", "wrong type"},
        {"[1, 2]", "wrong type"},
        {R"({"filler": "", "contractions": "", "intents": 4})", "wrong type"},
        {R"({"filler": "", "contractions": "", "intents": [null]})", "wrong type"},
        {with("\"Lights off\"", "7"), "wrong type"},
        {with("\"title\": \"Readiness\",", ""), "left out"},
        {with("\"ReadinessIntent\"", "\"readiness\""), "which is no intent"},
        {with("\"title\"", "title"), "is not JSON"},
        {with("Lights off", "\xFF"), "is not JSON"},
        {std::string(500000, '['), "is not JSON"},
        {std::string(400000, '[') + std::string(400000, ']'), "wrong type"},
        {std::string(2 << 20, ' ') + whole, "too large"},
    };
    for (const auto& [bytes, fault] : rows) {
        TestDevice device;
        writeFile(device.folder() / "bundle/Intents.json", bytes);
        const Recognition recognition = recognizePhrase(device, "Lights off");
        EXPECT_EQ(recognition.className, "") << fault;
        EXPECT_THAT(recognition.nearest, SizeIs(0));
        ASSERT_THAT(device.faults(), SizeIs(1)) << bytes.substr(0, 40);
        EXPECT_THAT(device.faults().front().what, HasSubstr(fault));
    }
    TestDevice missing;
    EXPECT_TRUE(intentDefinitions(missing).empty());
    ASSERT_THAT(missing.faults(), SizeIs(1));
    TestDevice broken;
    writeFile(broken.folder() / "bundle/Intents.json", "{\n\"filler\": \"\",\n!");
    EXPECT_TRUE(intentDefinitions(broken).empty());
    EXPECT_EQ(broken.faults().at(0).line, 3);
}

TEST_F(Phrases, AndTitlesStandInTheEnglishTable) {
    const IntentVocabulary vocabulary = englishVocabulary(english_);
    StringTable texts{{vocabulary.filler, vocabulary.filler}, {vocabulary.contractions, vocabulary.contractions}};
    for (const IntentDefinition& intent : vocabulary.intents) {
        for (const std::string& text : {intent.title, intent.description, intent.failureText}) {
            EXPECT_TRUE(texts.emplace(text, text).second) << text << " has two meanings";
        }
        for (const std::string& phrase : intent.phrases) {
            EXPECT_TRUE(texts.emplace(phrase, phrase).second) << phrase << " has two meanings";
        }
    }
    EXPECT_EQ(std::get<StringTable>(stringTableFromBytes(shipped("en.lproj/Intents.strings"))), texts);
}

}  // namespace
}  // namespace lunabrook
