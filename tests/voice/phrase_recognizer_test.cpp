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

// A device that speaks a language, with the shipped definitions, the English sentences and those of its own.
class Speaker : public TestDevice {
public:
    explicit Speaker(const std::string& language, const std::string& sentences = "")
        : TestDevice({.languages = {language}}) {
        writeFile(folder() / "bundle/Intents.json", shipped("Intents.json"));
        writeFile(folder() / "bundle/en.lproj/Sentences.yaml", shipped("en.lproj/Sentences.yaml"));
        if (!sentences.empty()) {
            writeFile(folder() / "bundle" / (language + ".lproj") / "Sentences.yaml", sentences);
        }
    }
    std::string found(const std::string& phrase) { return recognizePhrase(*this, phrase).className; }
};

// A file with one line of flow style for each intent: "ReadinessIntent: [Bin ich bereit, (Wie|So) bereit]".
std::string sentencesOf(const std::vector<std::pair<std::string, std::string>>& intents, const std::string& rest = "") {
    std::string yaml = "language: xx\nintents:\n";
    for (const auto& [className, sentences] : intents) {
        yaml += "  " + className + ": {data: [{sentences: [" + sentences + "]}]}\n";
    }
    return yaml + rest;
}

TEST(Phrases, FindTheirOwnIntentAndTheDefinitionsStandInTheEnglishTable) {
    Speaker english("en");
    std::set<std::string> classes;
    StringTable texts;
    for (const IntentDefinition& intent : intentDefinitions(english)) {
        EXPECT_TRUE(classes.insert(intent.className).second) << intent.className;
        EXPECT_TRUE(intent.phrases.size() >= 4 && intent.phrases.size() <= 6) << intent.className;
        EXPECT_EQ(intent.success.text, "${response}");
        EXPECT_EQ(std::pair(intent.success.code, intent.failure.code), std::pair(4, 5));
        EXPECT_THAT(intent.parameters, SizeIs(intent.className == "LightsOffIntent" ? 1 : 2));
        for (const std::string& phrase : intent.phrases) {
            EXPECT_EQ(english.found(phrase), intent.className) << phrase;
        }
        for (const std::string& text : {intent.title, intent.description, intent.failure.text}) {
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
    const std::pair<std::string, std::size_t> rows[] = {
        {"How ready am I today or tomorrow?", 1},
        {"today I am ready how", 2},
        {"Good night, how ready am I today?", 2},
        {"ready", 1},
        {"?!... \u2026 \u3002", 0},
        {"please", 0},
        {"colourless green ideas", 0},
        {std::string("Lights off\0 not", 15), 1},
        {"Lights off \xFF\xFE", 1},
        {"\xFF\xFE lights", 1},
        {"Lights off" + std::string(1 << 20, ' ') + "tomorrow", 1},
        {std::string(1 << 20, 'a'), 0},
    };
    for (const auto& [phrase, near] : rows) {
        const Recognition recognition = recognizePhrase(Speaker("en"), phrase);
        EXPECT_EQ(recognition.className, "") << phrase.substr(0, 40);
        EXPECT_THAT(recognition.nearest, SizeIs(near)) << phrase.substr(0, 40);
    }
}

TEST(Phrases, NearestShareTheWordsThatSaySomething) {
    const std::pair<const char*, const char*> rows[] = {
        {"How ready is my dinner?", "How ready am I today?"},
        {"lights on", "Lights off"},
        {"what is my blood pressure?", "What is my blood oxygen?"},
        {"Was ist meine readyness", "What is my readiness?"},  // a slip of the finger
        {"bedtime", "When is my bedtime?"},
        {"How did Anna sleep?", "How long did I sleep?"},
    };
    for (const auto& [phrase, nearest] : rows) {
        const Recognition recognition = recognizePhrase(Speaker("en"), phrase);
        ASSERT_FALSE(recognition.nearest.empty()) << phrase;  // none when the phrase is understood
        EXPECT_LE(recognition.nearest.size(), 3U) << phrase;
        EXPECT_EQ(recognition.nearest.front(), nearest) << phrase;
    }
}

TEST(Phrases, AreKnownInTheLanguageOfTheDeviceAndInEnglish) {
    Speaker german("de", sentencesOf({{"LightsOffIntent", "Licht aus, \"Danke, bitte\", Gute Nacht"},
                                      {"ReadinessIntent",
                                       "\"wie bereit bin ich [heute]?\", <wie_ist> meine Bereitschaft, "
                                       "\"Und jetzt?\", Ist es schon"},
                                      {"SleepRingsIntent", "Wie schön sind meine Schlafringe, und Jetzt, Ist es schön"},
                                      {"SleepSpO2Intent", "Good night"}},
                                     "expansion_rules: {wie_ist: \"wie('s| ist)\"}\n"
                                     "skip_words: [bitte, hallo, kannst du mir, sagen, danke]\n"));
    writeFile(german.folder() / "bundle/de.lproj/Intents.strings", "\"Readiness\" = \"Bereitschaft\";");
    const std::pair<const char*, const char*> rows[] = {
        {"Licht aus!", "LightsOffIntent"},
        {"lights off", "LightsOffIntent"},
        {"Kannst du mir bitte sagen: WIE BEREIT BIN ICH HEUTE?", "ReadinessIntent"},
        {"Wie\u2019s meine Bereitschaft?", "ReadinessIntent"},
        {"wie schon sind meine schlafringe", "SleepRingsIntent"},
        {"please tell me how ready I am today", "ReadinessIntent"},
        {"Good night", "SleepSpO2Intent"},  // the device's language goes before English
        {"Wie bereit ist mein Essen?", ""},
        {"Und jetzt?", ""},                    // given to two intents
        {"Danke, bitte", ""},                  // nothing but politeness
        {"Ist es schon?", "ReadinessIntent"},  // an accent counts where two intents would be one without it
        {"Ist es sch\u00F6n?", "SleepRingsIntent"},
        {"Ist es sch\u00F3n?", ""},
    };
    for (const auto& [phrase, className] : rows) {
        EXPECT_EQ(german.found(phrase), className) << phrase;
    }
    EXPECT_EQ(recognizePhrase(german, "Licht an").nearest.front(), "Licht aus");
    const std::vector<IntentDefinition> definitions = intentDefinitions(german);
    EXPECT_EQ(definitions[2].title, "Bereitschaft");
    EXPECT_THAT(definitions[2].phrases, testing::ElementsAre("Wie bereit bin ich?"));
    EXPECT_EQ(definitions[1].phrases.front(), "How long did I sleep?");  // German says nothing for it
    EXPECT_TRUE(german.faults().empty());
}

// What is a letter of its own in a language is no accent there.
TEST(Phrases, FollowTheCollationOfTheirLanguage) {
    Speaker swedish("sv", sentencesOf({{"LightsOffIntent", "Sl\u00E4ck id\u00E9n"}}));
    EXPECT_EQ(swedish.found("sl\u00E4ck iden"), "LightsOffIntent");
    EXPECT_EQ(swedish.found("sla\u0308ck ide\u0301n"), "LightsOffIntent");
    EXPECT_EQ(swedish.found("slack iden"), "");
    EXPECT_EQ(Speaker("tr", sentencesOf({{"LightsOffIntent", "\u0131\u015F\u0131k"}})).found("I\u015EIK"),
              "LightsOffIntent");
    Speaker japanese("ja", sentencesOf({{"ReadinessIntent", "\"\u4ECA\u65E5\u306E [\u79C1 \u306E] \u6E96\u5099\""}},
                                       "skip_words: [\u304A\u9858\u3044]\nsettings: {ignore_whitespace: true}\n"));
    EXPECT_EQ(japanese.found("\u4ECA\u65E5 \u306E\u6E96\u5099\u304A\u9858\u3044\u3002"), "ReadinessIntent");
    EXPECT_EQ(japanese.found("\u4ECA\u65E5\u306E\u6E96"), "");
}

// One of a translator's mistakes keeps the language out, says where it is, and leaves English alone.
TEST(Phrases, OfADamagedFileAreAFaultAndTheOtherLanguageIsUnderstood) {
    const auto readiness = [](const std::string& sentence, const std::string& rest = "") {
        return sentencesOf({{"ReadinessIntent", "bereit, \"" + sentence + "\""}}, rest);
    };
    const auto nested = [](std::size_t depth) { return std::string(depth, '(') + "a" + std::string(depth, ')'); };
    std::string chain = "expansion_rules:\n";
    std::string doubled = chain;
    for (int rule = 0; rule < 40; ++rule) {
        const std::string next = "<r" + std::to_string(rule - 1) + ">";
        chain += "  r" + std::to_string(rule) + ": a" + (rule > 0 ? next : "") + "\n";
        doubled += rule < 25 ? "  r" + std::to_string(rule) + ": a" + (rule > 0 ? next + next : "") + "\n" : "";
    }
    struct Row {
        std::string bytes;
        int line;
        const char* fault;
    };
    const Row rows[] = {
        {readiness("(bereit"), 3, "has a ( that is not closed"},
        {readiness("[bereit)"), 3, "has a ) that closes nothing"},
        {readiness("bereit]"), 3, "has a ] that closes nothing"},
        {readiness("bereit>"), 3, "has a > that closes nothing"},
        {readiness("<heute"), 3, "has a < that is not closed"},
        {readiness("<heute>"), 3, "uses <heute>, which is no rule"},
        {readiness("in {area}"), 3, "has a slot"},
        {readiness("(a|b;c)"), 3, "mixes | and ;"},
        {readiness("(a;b;c;d;e;f;g)"), 3, "more than six parts"},
        {readiness("ist () bereit"), 3, "has a group without words"},
        {readiness("bereit\\\\"), 3, "ends with a \\"},
        {readiness(nested(33)), 3, "nested deeper than 32"},
        {readiness(nested(100000)), 3, "nested deeper than 32"},
        {readiness("<a>", "expansion_rules:\n  b: so\n  a: \"<b> (x|<c>)\"\n  c: \"[<a>]\"\n"), 6,
         "itself by way of <a>"},
        {readiness("<r9>", chain), 37, "more than 32 deep"},
        {readiness("<r24>", doubled), 3, "unfolds into too many pieces"},
        {"language: de\nintents:\n  ReadinessIntent: [\n  x: y: z", 4, "is not YAML: "},
        {"language: de\nintents: &a\n  ReadinessIntent: *a\n", 2, "has an anchor"},
        {sentencesOf({{"ReadinessIntent", "bereit"}, {"ReadinessIntent", "fit"}}), 4, "has a key twice"},
        {sentencesOf({{"ReadyIntent", "bereit"}}), 3, "has sentences for \"ReadyIntent\", which is no intent"},
        {"language: de\nintents: {ReadinessIntent: {data: [{sentences: []}]}}", 2, "has an entry without sentences"},
        {"language: de\nintents: {ReadinessIntent: {data: [{sentences: [a], requires_context: b}]}}", 2,
         "has \"requires_context\" beside sentences"},
        {"language: de\nintents: {ReadinessIntent: {data: 7}}", 2, "has something else than a list under \"data\""},
        {"language: de\n", 1, "lacks \"intents\""},
        {"intents: {}\n", 1, "lacks \"language\""},
        {readiness("fit", "settings: {ignore_whitespace: perhaps}"), 4, "neither true nor false"},
        {"language: de\nintents: {}\n---\nlanguage: de\n", 3, "has a second document"},
        {std::string(100000, '['), 1, ""},
        // Once read without end.
        {",\nlanguage: de\n", 1, "has a second document"},
        {"language: de\nintents: {}\n#" + std::string(1 << 20, ' '), 0, "too large"},
    };
    for (const Row& row : rows) {
        Speaker german("de", row.bytes);
        EXPECT_EQ(german.found("bereit"), "") << row.fault;
        EXPECT_EQ(german.found("Lights off"), "LightsOffIntent") << row.fault;
        ASSERT_FALSE(german.faults().empty()) << row.bytes.substr(0, 200);
        EXPECT_THAT(german.faults().front().what, HasSubstr(row.fault));
        EXPECT_EQ(german.faults().front().line, row.line) << row.bytes.substr(0, 200);
        EXPECT_EQ(german.faults().front().file, german.folder() / "bundle/de.lproj/Sentences.yaml");
    }
    Speaker german("de", sentencesOf({{"ReadinessIntent", "bereit"}}));
    writeFile(german.folder() / "bundle/en.lproj/Sentences.yaml", "intents: [");
    EXPECT_EQ(german.found("Bereit?"), "ReadinessIntent");
    EXPECT_THAT(german.faults(), SizeIs(1));
}

TEST(Phrases, OfADamagedDefinitionAreUnderstoodStill) {
    const std::string whole = shipped("Intents.json");
    struct Row {
        std::string bytes;
        int line;
        const char* fault;
    };
    const Row rows[] = {
        {"", 1, "is not JSON"},
        {"{\n\"intents\": [],\n!", 3, "is not JSON"},
        {"[1, 2]", 0, "wrong type"},
        {R"({"intents": 4})", 0, "wrong type"},
        {stringByReplacing(whole, "\"Lights Off\"", "7"), 0, "wrong type"},
        {stringByReplacing(whole, "\"title\": \"Readiness\",", ""), 0, "left out"},
        {stringByReplacing(whole, "\"ReadinessIntent\"", "\"readiness\""), 0, "which is no intent"},
        {stringByReplacing(whole, "\"ReadinessIntent\"", "\"SleepFuelIntent\""), 0, "defined already"},
        {R"({"intents": []})", 0, "does not define \"LatestBedtimeIntent\""},
        {std::string(400000, '[') + std::string(400000, ']'), 0, "wrong type"},
        {R"({"intents": [)" + std::string(200000, '[') + std::string(200000, ']') + "]}", 0, "wrong type"},
        {std::string(2 << 20, ' ') + whole, 0, "too large"},
    };
    for (const Row& row : rows) {
        Speaker device("en");
        writeFile(device.folder() / "bundle/Intents.json", row.bytes);
        EXPECT_EQ(device.found("Lights off"), "LightsOffIntent") << row.fault;
        EXPECT_TRUE(intentDefinitions(device).empty());
        ASSERT_THAT(device.faults(), SizeIs(1)) << row.bytes.substr(0, 40);
        EXPECT_THAT(device.faults().front().what, HasSubstr(row.fault));
        EXPECT_EQ(device.faults().front().line, row.line) << row.bytes.substr(0, 40);
    }
    const TestDevice missing;
    EXPECT_EQ(recognizePhrase(missing, "Lights off").className, "");
    EXPECT_THAT(missing.faults(), SizeIs(1));
}

}  // namespace
}  // namespace lunabrook
