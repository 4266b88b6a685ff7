// The command as people and scripts run it: the real program, its output, its exit status.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "host/demo_week.h"
#include "platform/iso8601.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

using nlohmann::json;
using test::readFile;
using test::writeFile;
using testing::HasSubstr;

using testing::StartsWith;

struct Outcome {
    int status = 0;
    std::string output;
    std::string error;
};

const char* const kPinned = " --now 2026-06-10T08:30:00+02:00 --time-zone Europe/Berlin --locale en_US --language en ";

class Command : public testing::Test {
protected:
    Outcome run(const std::string& arguments, const std::string& device = kPinned, const std::string& before = "") {
        const std::string error = (folder_.path() / "error").string();
        const std::string line =
            before + " env -u LUNABROOK_PREFERENCES -u LANGUAGE LC_ALL=C TZ=UTC '" LUNABROOK_PROGRAM "' " +
            "--preferences '" + preferences().string() + "'" + device + arguments + " 2>'" + error + "'";
        Outcome outcome;
        FILE* pipe = popen(line.c_str(), "r");
        char buffer[4096];
        for (std::size_t count = 0; (count = fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
            outcome.output.append(buffer, count);
        }
        const int status = pclose(pipe);
        outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        outcome.error = readFile(error);
        return outcome;
    }

    std::filesystem::path preferences() const { return folder_.path() / "preferences"; }
    std::filesystem::path storeFile() const { return preferences() / "group.kestrovan.Lunabrook.plist"; }
    std::string inFolder(const char* name) const { return (folder_.path() / name).string(); }

    test::TemporaryFolder folder_;
};

TEST_F(Command, AnswersTheMadeUpWeek) {
    ASSERT_EQ(run("demo").status, 0);
    const Outcome answers =
        run("ask lights-off TimeAsleepIntent readiness sleep-fuel blood-oxygen respiration latest-bedtime "
            "sleep-rings wrist-temperature");
    EXPECT_EQ(answers.status, 0);
    EXPECT_EQ(answers.error, "");
    EXPECT_EQ(answers.output,
              "Good Night\n"
              "Today you slept 7 hours 35 minutes. You have a sleep debt of 1.9%.\n"
              "Today's Readiness is good.\n"
              "Sleep Fuel Rating is plus.\n"
              "Today's average SpO2 is 96.2%. Today's SpO2 range is 92% to 99%.\n"
              "Today's average respiration rate is 14.4 BrPM. Today's respiration range is 12.1 to 17.6.\n"
              "Try to be in bed by 9:51\u202FPM\n"
              "2 sleep rings closed. Today's sleep rating is 98%.\n"
              "Today's temperature is 34.62\u00B0. +0.14\u00B0 above baseline.\n");
    const std::string store = readFile(storeFile());
    const Outcome again = run("demo");
    EXPECT_EQ(again.status, 2);
    EXPECT_THAT(again.error, HasSubstr("a store is there already"));
    EXPECT_EQ(readFile(storeFile()), store);
}

// Whatever the hour, the made-up week is the report day's.
TEST_F(Command, MakesAWeekThatEveryMetricReportsAtAnyHour) {
    for (const char* zone : {"America/New_York", "Pacific/Kiritimati", "Asia/Kathmandu"}) {
        for (const char* time : {"00:04", "03:30", "06:47", "12:00", "20:59", "21:00", "21:00:30", "23:59"}) {
            test::TestDevice device({.timeZone = zone});
            const auto start = *device->timeZone().dateFromComponents({2026, 3, 8, 0, 0, 0});
            int hour = 0;
            int minute = 0;
            int second = 0;
            std::sscanf(time, "%d:%d:%d", &hour, &minute, &second);
            device.setNow(*device->timeZone().dateFromComponents({2026, 3, 8, hour, minute, second}));
            ASSERT_LE(start, device->now());
            device.store(demoWeek(device));
            const Outcome metrics = run(
                "metrics", std::string(" --now ") + iso8601StringFromDate(device->now(), device->timeZone()).value() +
                               " --time-zone " + zone + " --preferences '" + device->preferences().string() + "' ");
            const json results = json::parse(metrics.output);
            EXPECT_EQ(results.size(), 8U);
            for (const auto& [name, result] : results.items()) {
                EXPECT_FALSE(result.is_null()) << zone << " " << time << " " << name;
            }
            EXPECT_TRUE(results["requestSleepBank"].contains("latestBedLabel")) << zone << " " << time;
        }
    }
}

TEST_F(Command, AnswersStoresThatPythonWrote) {
    for (const char* form : {"binary", "xml"}) {
        std::filesystem::create_directories(preferences());
        std::filesystem::copy_file(std::string(LUNABROOK_TEST_DATA "/rings-") + form + ".plist", storeFile(),
                                   std::filesystem::copy_options::overwrite_existing);
        const std::string device = " --now 2026-06-10T08:30:00+02:00 --time-zone Europe/Berlin --locale de_DE ";
        EXPECT_EQ(run("ask sleep-rings", device).output, "2 sleep rings closed. Today's sleep rating is 88%.\n")
            << form;
        const Outcome asJson = run("ask --json sleep-rings", device);
        EXPECT_EQ(
            asJson.output,
            R"({"intent":"SleepRingsIntent","code":4,"response":"2 sleep rings closed. Today's sleep rating is 88%.",)"
            R"("dictionary":"{\"Sleep%\":\"94\", \"REM%\":\"110\", \"Deep%\": \"57\", \"bpm%\":\"102\", )"
            R"(\"Sleep\":\"7,50\", \"REM\":\"1,65\", \"Deep\": \"0,95\", \"bpm\":\"52\", \"SleepRating\":\"88\"}"})"
            "\n")
            << form;
    }
}

TEST_F(Command, PrintsJsonOneObjectALine) {
    const Outcome asked = run("ask --json LightsOffIntent readiness");
    EXPECT_EQ(asked.output, R"({"intent":"LightsOffIntent","code":4,"response":"Good Night","dictionary":null})"
                            "\n"
                            R"({"intent":"ReadinessIntent","code":4,"response":"No Data","dictionary":null})"
                            "\n");
    EXPECT_EQ(run("store show activeLightSwitch").output, "\"2026-06-10T06:30:00.000Z\"\n");
    EXPECT_EQ(run("store show nothing").output, "null\n");
}

TEST_F(Command, QuestionsLeaveTheStoreAsItIs) {
    run("demo");
    const std::string store = readFile(storeFile());
    const Outcome metrics = run("metrics requestSleepBank requestQuality");
    const json results = json::parse(metrics.output);
    EXPECT_EQ(results.size(), 2U);
    EXPECT_EQ(results["requestSleepBank"]["wakeTime"], "2026-06-10T04:48:00.000Z");
    EXPECT_EQ(run("today").status, 0);
    EXPECT_EQ(readFile(storeFile()), store);
    EXPECT_EQ(run("ask latest-bedtime").status, 0);
    EXPECT_THAT(json::parse(run("store show").output)["cachedSleepBankUpdate"], "2026-06-10T06:30:00.000Z");
}

TEST_F(Command, ImportsAnotherListUnderTheLock) {
    run("ask lights-off");
    writeFile(inFolder("more.plist"), "<plist><dict><key>readyStars</key><true/></dict></plist>");
    EXPECT_EQ(run("store import '" + inFolder("more.plist") + "'").status, 0);
    EXPECT_EQ(json::parse(run("store show").output),
              json({{"activeLightSwitch", "2026-06-10T06:30:00.000Z"}, {"readyStars", true}}));
    writeFile(inFolder("bad.plist"), "<plist><array/></plist>");
    const Outcome bad = run("store import '" + inFolder("bad.plist") + "'");
    EXPECT_EQ(bad.status, 2);
    EXPECT_THAT(bad.error, HasSubstr("whose root is not a dictionary; nothing was imported"));
}

TEST_F(Command, DamagedStoreIsToldAfterTheAnswerAndStaysAsItIs) {
    writeFile(storeFile(), "damaged");
    const Outcome reading = run("ask readiness time-asleep");
    EXPECT_EQ(reading.status, 3);
    EXPECT_EQ(reading.output, "No Data\nNo Data\n");
    EXPECT_EQ(reading.error, "lunabrook: " + storeFile().string() +
                                 " is not a property list, or a damaged one; it is left as it is and reads as empty\n");
    const Outcome writing = run("ask lights-off");
    EXPECT_EQ(writing.status, 3);
    EXPECT_EQ(writing.output, "Good Night\n");
    EXPECT_THAT(writing.error, HasSubstr("nothing was written"));
    EXPECT_EQ(readFile(storeFile()), "damaged");
}

TEST_F(Command, FullDiskKeepsTheStoreAndTheAnswer) {
    run("demo");
    const std::string store = readFile(storeFile());
    const Outcome full = run("ask lights-off", kPinned, "trap '' XFSZ; ulimit -f 1;");  // no file beyond 512 bytes
    EXPECT_EQ(full.status, 3);
    EXPECT_EQ(full.output, "Good Night\n");
    EXPECT_THAT(full.error, HasSubstr("cannot be written and stays as it was"));
    EXPECT_EQ(readFile(storeFile()), store);
}

TEST_F(Command, DamagedStringTableIsToldWithItsLine) {
    writeFile(inFolder("bundle/en.lproj/Localizable.strings"), "\"No Data\" = \"Nothing\";\n\"Good Night\" \"x\";\n");
    const Outcome asked = run("ask readiness", kPinned + (" --bundle '" + inFolder("bundle") + "' "));
    EXPECT_EQ(asked.status, 3);
    EXPECT_EQ(asked.output, "No Data\n");
    EXPECT_THAT(asked.error, HasSubstr("Localizable.strings:2: "));
}

TEST_F(Command, WrongCallsSayWhatWouldBeRight) {
    const struct {
        const char* arguments;
        const char* says;
    } rows[] = {
        {"ask readines", "did you mean readiness"},
        {"ask --jsn readiness", "--jsn"},
        {"aks readiness", "did you mean ask?"},
        {"metrics requestSp02", "did you mean requestSpO2"},
        {"store import /nowhere/at/all", "/nowhere/at/all"},
        {"--now rubbish ask readiness", "2026-06-10T08:30:00+02:00"},
        {"--now 2026-06-10T08:30:00 ask readiness", "with a zone"},
        {"--time-zone Europe/Bern ask readiness", "Europe/Berlin"},
        {"--locale xx_YY ask readiness", "de_DE"},
        {"", "--help"},
    };
    for (const auto& row : rows) {
        const Outcome wrong = run(row.arguments, " ");
        EXPECT_EQ(wrong.status, 2) << row.arguments;
        EXPECT_EQ(wrong.output, "") << row.arguments;
        EXPECT_THAT(wrong.error, StartsWith("lunabrook: ")) << row.arguments;
        EXPECT_THAT(wrong.error, HasSubstr(row.says)) << row.arguments;
        EXPECT_EQ(std::count(wrong.error.begin(), wrong.error.end(), '\n'), 1) << wrong.error;
    }
    EXPECT_FALSE(std::filesystem::exists(preferences()));
}

TEST_F(Command, OptionsGoBeforeOrAfterTheVerb) {
    EXPECT_EQ(run("ask readiness --now 2026-06-10T08:30:00Z --language en,de", " ").output, "No Data\n");
    EXPECT_EQ(run("store show --now 2026-06-10T08:30:00Z", " ").output, "{}\n");
    EXPECT_EQ(run("--help", " ").status, 0);
}

TEST_F(Command, TakesTheDeviceFromTheEnvironment) {
    const std::string environment = "env TZ=Asia/Tokyo LC_TIME=de_DE.UTF-8 LANG=fr_FR.UTF-8 XDG_DATA_HOME='" +
                                    folder_.path().string() + "' '" LUNABROOK_PROGRAM "' ";
    FILE* pipe = popen((environment + "demo --now 2026-06-10T23:00:00Z >/dev/null && " + environment +
                        "ask latest-bedtime --now 2026-06-10T23:00:00Z")
                           .c_str(),
                       "r");
    char line[200] = "";
    ASSERT_NE(fgets(line, sizeof line, pipe), nullptr);
    pclose(pipe);
    EXPECT_STREQ(line, "Try to be in bed by 21:51\n");  // of 11 June in Tokyo, in the German clock
    EXPECT_TRUE(std::filesystem::exists(folder_.path() / "lunabrook/group.kestrovan.Lunabrook.plist"));
}

TEST_F(Command, AnswersPhrasesAmongNames) {
    run("demo");
    const Outcome mixed = run("ask 'Hey, how ready am I today?' sleep-fuel --json \"What's my SpO2\"");
    EXPECT_EQ(mixed.status, 0);
    EXPECT_THAT(mixed.output, testing::ContainsRegex("ReadinessIntent.*\n.*SleepFuelIntent.*\n.*SleepSpO2Intent"));
    EXPECT_EQ(run("ask GOODNIGHT").output, "Good Night\n");
}

TEST_F(Command, AnswersNothingWhenOnePhraseIsUnclear) {
    for (const char* unclear : {"'How ready is my dinner?'", "''", "'lights on'", "lightsof", "'!?'"}) {
        const Outcome asked = run(std::string("ask lights-off ") + unclear + " 'Good night'");
        EXPECT_EQ(asked.status, 2) << unclear;
        EXPECT_EQ(asked.output, "") << unclear;
        EXPECT_FALSE(std::filesystem::exists(preferences())) << unclear;
    }
    EXPECT_THAT(run("ask 'lights on'").error, HasSubstr("the nearest phrases are \"Lights off\", \""));
}

TEST_F(Command, AnswersEachLineOfItsInput) {
    run("demo");
    const Outcome lines = run("ask", kPinned, "printf 'readiness\\r\\n\\nlights on\\n  How well did I sleep?' |");
    EXPECT_EQ(lines.status, 2);
    EXPECT_EQ(lines.output, "Today's Readiness is good.\n2 sleep rings closed. Today's sleep rating is 98%.\n");
    EXPECT_THAT(lines.error, StartsWith("lunabrook: no intent answers to \"lights on\""));
    EXPECT_EQ(run("ask", kPinned, "true |").status, 0);
}

TEST_F(Command, AsksAPersonAtATerminal) {
    // The terminal's answers and questions come in one stream.
    const std::string program =
        std::string("'" LUNABROOK_PROGRAM "' --preferences '") + preferences().string() + "'" + kPinned + "ask";
    writeFile(inFolder("said"), "good night\nlights on\n");
    const std::string line = "script -qec \"" + program + "\" /dev/null <'" + inFolder("said") + "'";
    FILE* pipe = popen(line.c_str(), "r");
    std::string shown;
    for (int letter; (letter = fgetc(pipe)) != EOF;) {
        shown += static_cast<char>(letter);
    }
    EXPECT_EQ(WEXITSTATUS(pclose(pipe)), 2);
    EXPECT_THAT(shown, HasSubstr("> Good Night\r\n> lunabrook: no intent answers to \"lights on\""));
    EXPECT_THAT(run("store show activeLightSwitch").output, HasSubstr("2026-06-10T06:30"));
}

// A name takes no definitions; a damaged resource is no reason to keep an answer back.
TEST_F(Command, AnswersNamesWithoutTheDefinitions) {
    const std::string device = kPinned + (" --bundle '" + inFolder("bundle") + "' ");
    writeFile(inFolder("bundle/Intents.json"), "{\n[");
    EXPECT_EQ(run("ask readiness", device).status, 0);
    const Outcome phrase = run("ask 'Lights off'", device);
    EXPECT_EQ(phrase.status, 2);
    EXPECT_THAT(phrase.error, HasSubstr("Intents.json:2: is not JSON"));
    const Outcome list = run("intents", device);
    EXPECT_EQ(list.status, 3);
    EXPECT_EQ(list.output, "");
}

TEST_F(Command, ListsTheIntentsInTheDevicesLanguage) {
    std::filesystem::create_directories(inFolder("bundle"));
    std::filesystem::copy_file(LUNABROOK_RESOURCES "/Intents.json", inFolder("bundle/Intents.json"));
    writeFile(inFolder("bundle/ja.lproj/Intents.strings"), "\"Readiness\" = \"\u6E96\u5099\";");
    const Outcome list = run("intents", kPinned + (" --language ja --bundle '" + inFolder("bundle") + "' "));
    EXPECT_EQ(list.status, 0);
    EXPECT_EQ(std::count(list.output.begin(), list.output.end(), '\n'), 9);
    EXPECT_THAT(list.output, HasSubstr("readiness          \u6E96\u5099               \"How ready am I today?\"\n"));
    EXPECT_THAT(list.output, HasSubstr("wrist-temperature  Wrist Temperature  \"What is my wrist temperature?\"\n"));
}

}  // namespace
}  // namespace lunabrook
