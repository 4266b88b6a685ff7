// Spoken phrases against the definitions that are shipped, in English and on a German device.

#include "voice/phrase_recognizer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "platform/text/string_table.h"
#include "platform/text/text_case.h"
#include "support/test_device.h"
#include "voice/intent_definitions.h"

namespace lunabrook {
namespace {

using test::readFile;
using test::TestDevice;
using test::writeFile;
using testing::HasSubstr;
using testing::SizeIs;

std::string shipped(const std::string& name) { return readFile(std::filesystem::path(LUNABROOK_RESOURCES) / name); }

// A device that speaks a language, with the shipped definitions and their translations.
class Speaker : public TestDevice {
public:
    explicit Speaker(const std::string& language, const std::string& table = "")
        : TestDevice({.languages = {language}}) {
        writeFile(folder() / "bundle/Intents.json", shipped("Intents.json"));
        writeFile(folder() / "bundle" / (language + ".lproj") / "Intents.strings", table);
    }
    std::string found(const std::string& phrase) { return recognizePhrase(*this, phrase).className; }
};

TEST(Phrases, FindTheirOwnIntentAndStandWithItsTextsInTheEnglishTable) {
    Speaker english("en");
    const IntentVocabulary vocabulary = englishVocabulary(english);
    std::set<std::string> classes;
    StringTable texts{{vocabulary.filler, vocabulary.filler}, {vocabulary.contractions, vocabulary.contractions}};
    for (const IntentDefinition& intent : vocabulary.intents) {
        EXPECT_TRUE(classes.insert(intent.className).second) << intent.className;
        EXPECT_TRUE(intent.phrases.size() >= 4 && intent.phrases.size() <= 6) << intent.className;
        EXPECT_EQ(intent.success.text, "${response}");
        EXPECT_EQ(std::pair(intent.success.code, intent.failure.code), std::pair(4, 5));
        EXPECT_THAT(intent.parameters, SizeIs(intent.className == "LightsOffIntent" ? 1 : 2));
        std::vector<std::string> all = {intent.title, intent.description, intent.failure.text};
        for (const std::string& phrase : intent.phrases) {
            EXPECT_EQ(english.found(phrase), intent.className) << phrase;
            all.push_back(phrase);
        }
        for (const std::string& text : all) {
            EXPECT_TRUE(texts.emplace(text, text).second) << text << " has two meanings";
        }
    }
    EXPECT_THAT(classes, SizeIs(9));
    EXPECT_EQ(std::get<StringTable>(stringTableFromBytes(shipped("en.lproj/Intents.strings"))), texts);
}

TEST(Phrases, AreHeardWithoutCaseAccentsPunctuationAndPoliteness) {
    const std::pair<const char*, const char*> rows[] = {
        {"HOW READY AM I TODAY?!", "ReadinessIntent"},
        {"H\u00F6w r\u00E9ady am I t\u00F4day", "ReadinessIntent"},
        {"How\u00A0ready  am\tI \u2013 today \U0001F634?", "ReadinessIntent"},
        {"Hey Lunabrook, could you please tell me: how ready am I today? Thanks!", "ReadinessIntent"},
        {"Whats my readiness, please?", "ReadinessIntent"},
        {"What\u2019s my SpO\u2082?", "SleepSpO2Intent"},
        {"I am going to bed", "LightsOffIntent"},
        {"I'd like to know how well did I sleep", "SleepRingsIntent"},
        {"okay, goodnight", "LightsOffIntent"},
    };
    Speaker english("en");
    for (const auto& [phrase, className] : rows) {
        EXPECT_EQ(english.found(phrase), className) << phrase;
    }
}

TEST(Phrases, NearMissesFindNone) {
    const std::string rows[] = {
        "How ready am I today or tomorrow?",
        "today I am ready how",
        "Good night, how ready am I today?",
        "ready",
        "?!... \u2026 \u3002",
        std::string("Lights off\0 not", 15),
        "\xFF\xFE lights",
        "Lights off" + std::string(1 << 20, ' ') + "tomorrow",
        std::string(1 << 20, 'a'),
    };
    for (const std::string& phrase : rows) {
        const Recognition recognition = recognizePhrase(Speaker("en"), phrase);
        EXPECT_EQ(recognition.className, "") << phrase.substr(0, 40);
        EXPECT_THAT(recognition.nearest, SizeIs(3)) << phrase.substr(0, 40);
    }
}

TEST(Phrases, NearestShareTheWordsThatSaySomething) {
    const std::pair<const char*, const char*> rows[] = {
        {"How ready is my dinner?", "How ready am I?"},
        {"lights on", "Lights off"},
        {"what is my blood pressure?", "What is my blood oxygen?"},
        {"Was ist meine readyness", "What is my readiness?"},  // a slip of the finger
        {"bedtime", "When is my bedtime?"},
        {"How did I sleep?", "How long did I sleep?"},  // "now" is not nearly "how"
    };
    for (const auto& [phrase, nearest] : rows) {
        const Recognition recognition = recognizePhrase(Speaker("en"), phrase);
        ASSERT_THAT(recognition.nearest, SizeIs(3)) << phrase;  // none when the phrase is understood
        EXPECT_EQ(recognition.nearest.front(), nearest) << phrase;
    }
}

TEST(Phrases, AreKnownInTheLanguageOfTheDeviceAndInEnglish) {
    const IntentVocabulary english = englishVocabulary(Speaker("en"));
    Speaker german("de", "\"" + english.filler + "\" = \"bitte, hallo, kannst du mir, sagen, danke\";\n\"" +
                             english.contractions + "\" = \"wie's = wie ist\";\n" +
                             R"("Lights off" = "Licht aus";
                                "Lights out" = "Danke, bitte";
                                "Readiness" = "Bereitschaft";
                                "How ready am I?" = "Und jetzt?";
                                "How well did I sleep?" = "und Jetzt";
                                "How ready am I today?" = "Wie bereit bin ich heute?";
                                "What is my readiness?" = "Wie ist meine Bereitschaft?";
                                "How are my sleep rings?" = "Wie schön sind meine Schlafringe?";
                                "Good night" = "Gute Nacht";
                                "What is my SpO2?" = "Good night";)");
    const std::pair<const char*, const char*> rows[] = {
        {"Licht aus!", "LightsOffIntent"},
        {"lights off", "LightsOffIntent"},
        {"Kannst du mir bitte sagen: WIE BEREIT BIN ICH HEUTE?", "ReadinessIntent"},
        {"Wie's meine Bereitschaft?", "ReadinessIntent"},
        {"wie schon sind meine schlafringe", "SleepRingsIntent"},
        {"please tell me how ready I am today", "ReadinessIntent"},
        {"Good night", "SleepSpO2Intent"},  // the device's language goes before English
        {"Wie bereit ist mein Essen?", ""},
        {"Und jetzt?", ""},    // given to two intents
        {"Danke, bitte", ""},  // nothing but politeness
    };
    for (const auto& [phrase, className] : rows) {
        EXPECT_EQ(german.found(phrase), className) << phrase;
    }
    EXPECT_EQ(recognizePhrase(german, "Licht an").nearest.front(), "Licht aus");
    EXPECT_EQ(intentDefinitions(german)[2].title, "Bereitschaft");
    EXPECT_TRUE(german.faults().empty());
}

// What is a letter of its own in a language is no accent there.
TEST(Phrases, FollowTheCollationOfTheirLanguage) {
    Speaker swedish("sv", "\"Lights off\" = \"Sl\u00E4ck id\u00E9n\";");
    EXPECT_EQ(swedish.found("sl\u00E4ck iden"), "LightsOffIntent");
    EXPECT_EQ(swedish.found("slack iden"), "");
    EXPECT_EQ(Speaker("tr", "\"Lights off\" = \"\u0131\u015F\u0131k\";").found("I\u015EIK"), "LightsOffIntent");
}

TEST(Phrases, OfADamagedResourceAreAFaultAndUnclear) {
    const std::string whole = shipped("Intents.json");
    struct Row {
        std::string bytes;
        int line;
        const char* fault;
    };
    const Row rows[] = {
        {"", 1, "is not JSON"},
        {"{\n\"filler\": \"\",\n!", 3, "is not JSON"},
        {"[1, 2]", 0, "wrong type"},
        {R"({"filler": "", "contractions": "", "intents": 4})", 0, "wrong type"},
        {stringByReplacing(whole, "\"Lights off\"", "7"), 0, "wrong type"},
        {stringByReplacing(whole, "\"title\": \"Readiness\",", ""), 0, "left out"},
        {stringByReplacing(whole, "\"ReadinessIntent\"", "\"readiness\""), 0, "which is no intent"},
        {stringByReplacing(whole, "\"ReadinessIntent\"", "\"SleepFuelIntent\""), 0, "defined already"},
        {R"({"filler": "", "contractions": "", "intents": []})", 0, "does not define \"LatestBedtimeIntent\""},
        {std::string(400000, '[') + std::string(400000, ']'), 0, "wrong type"},
        {std::string(2 << 20, ' ') + whole, 0, "too large"},
    };
    for (const Row& row : rows) {
        Speaker device("en");
        writeFile(device.folder() / "bundle/Intents.json", row.bytes);
        EXPECT_EQ(device.found("Lights off"), "") << row.fault;
        ASSERT_THAT(device.faults(), SizeIs(1)) << row.bytes.substr(0, 40);
        EXPECT_THAT(device.faults().front().what, HasSubstr(row.fault));
        EXPECT_EQ(device.faults().front().line, row.line) << row.bytes.substr(0, 40);
    }
    const TestDevice missing;
    EXPECT_TRUE(intentDefinitions(missing).empty());
    EXPECT_THAT(missing.faults(), SizeIs(1));
}

}  // namespace
}  // namespace lunabrook
