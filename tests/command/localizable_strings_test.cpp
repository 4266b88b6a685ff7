// The tables of all languages against the English one, and the English table against the fragments that the system
// looks up: a device whose table marks every fragment says everything it can say, and each mark must be said while no
// English word is left over.

#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "answers/handle_lights_off.h"
#include "answers/handle_sleep_metrics.h"
#include "command/demo_week.h"
#include "command/today.h"
#include "metrics/group_metrics.h"
#include "platform/text/string_table.h"
#include "service/wyoming/conversation.h"
#include "support/shipped_languages.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

using test::TestDevice;

// "⟦7⟧" is unchanged by case and by taking blanks away; the placeholders of a format stay behind it.
std::vector<std::pair<std::string, std::string>> markedTable() {
    const auto shippedTable = std::get<StringTable>(
        stringTableFromBytes(test::readFile(LUNABROOK_RESOURCES "/en.lproj/Localizable.strings")));
    std::vector<std::pair<std::string, std::string>> marked;
    for (const auto& [key, text] : shippedTable) {
        EXPECT_EQ(key, text) << "English says the keys";
        std::string placeholders;
        for (std::size_t at = key.find("%@"); at != std::string::npos; at = key.find("%@", at + 1)) {
            placeholders += "%@ ";
        }
        marked.emplace_back(key, "\u27E6" + std::to_string(marked.size()) + "\u27E7" + placeholders);
    }
    return marked;
}

std::string everythingSaidBy(const Device& device) {
    GroupMetrics metrics(device);
    HandleSleepMetrics answers(device);
    std::string said = todayText(glanceAt(device), 80, false);
    for (const auto& result :
         {metrics.requestQuality(), metrics.requestSpO2(), metrics.requestRespRate(), metrics.requestWristTemp(),
          metrics.requestReadiness(), metrics.requestOctane(), metrics.requestConsistencyDict(),
          metrics.requestSleepBank(), answers.getSleepBankInfo(), answers.getSpO2Info(),
          answers.getSleepMetricForKey("rawSleepTime", 0, 0), HandleLightsOff(device).turnLightsOff()}) {
        for (const auto& [key, value] : result.value_or(Dictionary{})) {
            said += value.string() != nullptr ? *value.string() + "\n" : "";
        }
    }
    return said;
}

// Heart-rate signals whose combined score lies in each of the seven grades, best first: a lone variability of ratio r
// scores r - 0.3 from the baseline up, r - 0.25 below. The last one has not changed.
constexpr double kRatios[] = {2.0, 1.6, 1.3, 1.2, 1.05, 0.9, 0.6, 1.0};

// What a voice assistant speaks for a sentence that is not understood.
std::string saidToTheUnclear(const Device& device) {
    DeviceOptions options;
    options.preferences = device.preferences();
    options.bundle = device.bundle().folder();
    options.languages = device.bundle().language();
    const auto reply = wyoming::Conversation(options).answer({.type = "transcript", .data = {{"text", "?"}}});
    return reply->data.at("text");
}

std::string everythingThatCanBeSaid(TestDevice& device) {
    std::string said = everythingSaidBy(device);  // "No Data"
    said += saidToTheUnclear(device);
    Dictionary week = demoWeek(device);
    Dictionary watch = *week.at("watchTrackDict").dictionary();
    Dictionary bank = *week.at("bankDict").dictionary();
    bank.insert_or_assign("wristTempAverage28", 35.0);
    bank.insert_or_assign("prevAverageBedtime", 9000.0);
    for (std::size_t i = 0; i < std::size(kRatios); ++i) {
        const char* fills[] = {"0|0|0", "1|0|0", "1|1|0", "1|1|1"};
        watch.insert_or_assign("rawRingRating", fills[i % 4]);
        watch.insert_or_assign("rawSleepTime", i % 4 < 3 ? 3600.0 : 36000.0);
        watch.insert_or_assign("rawSleepBankTime", i % 2 == 0 ? 20000.0 : 40000.0);
        const Dictionary signals{{"key", "20260610"}, {"hrvAverage", 50.0}, {"hrvTodayVal", 50.0 * kRatios[i]}};
        bank.insert_or_assign("readyDict", signals);
        bank.insert_or_assign("octaneDict", signals);
        bank.insert_or_assign("wristTempTodayValue", 34.0 + static_cast<double>(i % 3));
        bank.insert_or_assign("averageBedtime", 9000.0 + 3600.0 * (static_cast<double>(i % 3) - 1));
        if (i == 4) {
            watch.erase("showStages");
        }
        week.insert_or_assign("watchTrackDict", watch);
        week.insert_or_assign("bankDict", bank);
        for (const bool readyStars : {false, true}) {
            week.insert_or_assign("readyStars", readyStars);
            device.store(week);
            said += everythingSaidBy(device);
        }
    }
    return said;
}

TEST(LocalizableStrings, HoldsExactlyTheFragmentsThatAreSaid) {
    const auto table = markedTable();
    TestDevice device({.locale = "de_DE", .translations = table});
    const std::string said = everythingThatCanBeSaid(device);
    for (const auto& [fragment, mark] : table) {
        EXPECT_NE(said.find(mark.substr(0, mark.find("\u27E7"))), std::string::npos) << "never said: " << fragment;
    }
    // What is no fragment: the unit, the locale's words for hours, minutes, weekdays and halves of the day.
    const std::set<std::string> known{"ms", "Std", "Min",      "Stunde", "Stunden", "Minute", "Minuten",
                                      "Di", "Mi",  "Mittwoch", "Juni",   "AM",      "PM"};
    const std::regex word("[A-Za-z]+");
    std::set<std::string> leftOver;
    for (auto match = std::sregex_iterator(said.begin(), said.end(), word); match != std::sregex_iterator(); ++match) {
        if (!known.contains(match->str())) {
            leftOver.insert(match->str());
        }
    }
    EXPECT_EQ(leftOver, std::set<std::string>{}) << "said without a fragment of the table";
}

StringTable tableOf(const std::string& language, const char* name) {
    const auto read = stringTableFromBytes(test::readFile(test::shippedFile(language, name)));
    const auto* table = std::get_if<StringTable>(&read);
    EXPECT_NE(table, nullptr) << language << "/" << name << " cannot be read";
    return table != nullptr ? *table : StringTable();
}

// In the order of their arguments: "%2$@ %1$@" has the same as "%@ %@".
std::vector<std::string> placeholdersOf(const std::string& text) {
    const std::regex placeholder("%([0-9]+)?\\$?(@|[.0-9]*[df])?");
    std::vector<std::string> found;
    int next = 1;
    for (auto match = std::sregex_iterator(text.begin(), text.end(), placeholder); match != std::sregex_iterator();
         ++match) {
        found.push_back(((*match)[1].matched ? (*match)[1].str() : std::to_string(next++)) + (*match)[2].str());
    }
    std::sort(found.begin(), found.end());
    return found;
}

class ShippedStrings : public testing::TestWithParam<std::string> {};

TEST_P(ShippedStrings, TranslateEveryTextAndKeepItsPlaceholders) {
    // What is written so in many languages, and what is a word of one.
    const std::set<std::string> same = {"🥇", "★★★★★", "★★★★⭒", "★★★⭒⭒", "★★⭒⭒⭒",   "★⭒⭒⭒⭒",   "💆‍♂️",
                                        "HRV",  "REM",   "bpm",   "SpO2",  "MinSpO2", "MaxSpO2", "Premium"};
    const std::set<std::string> sameInOne = {"fr: Recharge", "nl: later"};
    const std::string language = GetParam();
    for (const char* name : {"Localizable.strings", "Intents.strings"}) {
        const StringTable english = tableOf("en", name);
        const StringTable table = tableOf(language, name);
        EXPECT_EQ(table.size(), english.size());
        for (const auto& [key, text] : table) {
            EXPECT_TRUE(english.contains(key)) << key << " is no key";
            EXPECT_NE(text, "") << key;
            EXPECT_EQ(text.find("\uFFFD"), std::string::npos) << key;
            EXPECT_EQ(placeholdersOf(text), placeholdersOf(key)) << key;
            const bool maySame = language == "en" || same.contains(key) || sameInOne.contains(language + ": " + key);
            EXPECT_TRUE(text != key || maySame) << "\"" << key << "\" is left in English";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, ShippedStrings, testing::ValuesIn(test::shippedLanguages()), test::nameOfLanguage);

// The nearest of them, or English: a script that the user may not read is no answer.
TEST(ShippedLanguages, AnswerTheirRelativesAndNoOthers) {
    const std::pair<const char*, const char*> rows[] = {{"pt-PT", "pt-BR"}, {"de-CH", "de"},      {"zh-TW", ""},
                                                        {"zh-HK", ""},      {"zh-CN", "zh-Hans"}, {"en-GB", "en"},
                                                        {"nb", ""},         {"es-MX", "es"},      {"fr-CA", "fr"}};
    for (const auto& [wanted, found] : rows) {
        EXPECT_EQ(Bundle(LUNABROOK_RESOURCES, {wanted}, [](const Fault&) {}).language(), found) << wanted;
    }
}

}  // namespace
}  // namespace lunabrook
