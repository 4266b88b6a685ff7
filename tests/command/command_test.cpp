// The command as people and scripts run it: the real program, its output, its exit status.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "platform/files/property_list.h"
#include "support/shell.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

using nlohmann::json;
using test::Ended;
using test::readFile;
using test::shell;
using test::writeFile;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

struct Outcome : Ended {
    std::string error;
};

const char* const kPinned = " --now 2026-06-10T08:30:00+02:00 --time-zone Europe/Berlin --locale en_US --language en ";

class Command : public testing::Test {
protected:
    Outcome run(const std::string& arguments, const std::string& device = kPinned, const std::string& before = "") {
        return {shell(before + " env -u LUNABROOK_PREFERENCES -u LANGUAGE LC_ALL=C TZ=UTC '" LUNABROOK_PROGRAM "' " +
                      "--preferences '" + preferences().string() + "'" + device + arguments + " 2>'" +
                      inFolder("error") + "'"),
                readFile(inFolder("error"))};
    }

    std::filesystem::path preferences() const { return folder_.path() / "preferences"; }
    std::filesystem::path storeFile() const { return preferences() / "group.kestrovan.Lunabrook.plist"; }
    std::string inFolder(const char* name) const { return (folder_.path() / name).string(); }

    test::TemporaryFolder folder_;
};

TEST_F(Command, AnswersTheMadeUpWeek) {
    ASSERT_EQ(run("demo").status, 0);
    const Outcome answers = run("ask lights-off TimeAsleepIntent latest-bedtime");
    EXPECT_EQ(answers.status, 0);
    EXPECT_EQ(answers.error, "");
    EXPECT_EQ(answers.output,
              "Good Night\n"
              "Today you slept 7 hours 35 minutes. You have a sleep debt of 1.9%.\n"
              "Try to be in bed by 9:51\u202FPM\n");
    const std::string store = readFile(storeFile());
    const Outcome again = run("demo");
    EXPECT_EQ(again.status, 2);
    EXPECT_THAT(again.error, HasSubstr("a store is there already"));
    EXPECT_EQ(readFile(storeFile()), store);
    EXPECT_THAT(
        run("demo --again --now 2026-06-11T08:30").output,
        HasSubstr("\nTry: lunabrook --preferences " + preferences().string() +
                  " --now 2026-06-11T08:30 --time-zone Europe/Berlin --locale en_US --language en ask sleep-r"));
    EXPECT_EQ(run("store show sleepSessionEnd").output, "\"2026-06-11T04:48:00.000Z\"\n");
    writeFile(inFolder("more.plist"), "<plist><dict><key>bankDict</key><dict/></dict></plist>");
    run("store import '" + inFolder("more.plist") + "'");
    EXPECT_EQ(run("demo --again").status, 2) << "somebody's own days are in it";
}

TEST_F(Command, SaysWhereAStoreWouldBe) {
    const std::string line = "lunabrook: there is no store yet, it would be " + storeFile().string() +
                             "; `lunabrook --preferences " + preferences().string() +
                             " --locale de_DE demo` makes one up\n";
    for (const char* verb : {"ask readiness", "today", "metrics readiness", "store show", "ask"}) {
        const Outcome asked = run(verb, " --locale de_DE ", "echo readiness |");
        EXPECT_EQ(asked.status, 0) << verb;
        EXPECT_EQ(asked.error, line) << verb;
    }
    EXPECT_EQ(run("ask readiness lights-off").error, "");
}

TEST_F(Command, HelpFitsATerminal) {
    for (const std::string verb : {"", "ask", "today", "metrics", "intents", "demo", "store", "store show",
                                   "store import", "watch", "watch push"}) {
        std::istringstream lines(run(verb + " --help").output);
        int count = 0;
        for (std::string line; std::getline(lines, line); ++count) {
            EXPECT_LE(line.size(), 78U) << line;
        }
        EXPECT_GT(count, 5) << verb;
    }
    EXPECT_EQ(run("-V").output, run("--version").output);
}

TEST_F(Command, AnswersStoresThatPythonWroteInJson) {
    std::filesystem::create_directories(preferences());
    for (const char* form : {"binary", "xml"}) {
        std::filesystem::copy_file(std::string(LUNABROOK_TEST_DATA "/rings-") + form + ".plist", storeFile(),
                                   std::filesystem::copy_options::overwrite_existing);
        EXPECT_EQ(
            run("ask --json sleep-rings --locale de_DE",
                " --now 2026-06-10T08:30Z --time-zone Europe/Berlin --language en ")
                .output,
            R"({"intent":"SleepRingsIntent","code":4,"response":"2 sleep rings closed. Today's sleep rating is 88%.",)"
            R"("dictionary":"{\"Sleep%\":\"94\", \"REM%\":\"110\", \"Deep%\": \"57\", \"bpm%\":\"102\", )"
            R"(\"Sleep\":\"7,50\", \"REM\":\"1,65\", \"Deep\": \"0,95\", \"bpm\":\"52\", \"SleepRating\":\"88\"}"})"
            "\n")
            << form;
    }
}

TEST_F(Command, AnswersNamesAndPhrasesOneAnswerALine) {
    EXPECT_EQ(run("ask GOODNIGHT 'Hey, how ready am I today?' --json sleep-fuel").output,
              R"({"intent":"LightsOffIntent","code":4,"response":"Good Night","dictionary":null})"
              "\n"
              R"({"intent":"ReadinessIntent","code":4,"response":"No Data","dictionary":null})"
              "\n"
              R"({"intent":"SleepFuelIntent","code":4,"response":"No Data","dictionary":null})"
              "\n");
    EXPECT_EQ(run("store show activeLightSwitch").output, "\"2026-06-10T06:30:00.000Z\"\n");
    EXPECT_EQ(run("store show nothing --now 2026-06-10T08:30:00Z --language en,de", " ").output, "null\n");
}

TEST_F(Command, QuestionsLeaveTheStoreAsItIs) {
    run("demo");
    const std::string store = readFile(storeFile());
    const json results = json::parse(run("metrics requestSleepBank requestQuality").output);
    EXPECT_EQ(results.size(), 2U);
    json all = json::parse(run("metrics").output);
    const char* const rows[][3] = {{"requestQuality", "ringSleepLabel", "7h 35m"},
                                   {"requestSpO2", "averageSpO2Label", "96.2%"},
                                   {"requestRespRate", "averageRespRateLabel", "14.4 BrPM"},
                                   {"requestWristTemp", "wristTempTodayLabel", "34.62°"},
                                   {"requestReadiness", "hrvLabel", "58 ms"},
                                   {"requestOctane", "hrvLabel", "61 ms"},
                                   {"requestConsistencyDict", "trendString", "17m earlier"},
                                   {"requestSleepBank", "wakeTimeLabel", "6:48\u202FAM"}};
    EXPECT_EQ(all.size(), std::size(rows));
    for (const auto& [request, key, text] : rows) {
        EXPECT_EQ(all[request][key], text) << request;
    }
    EXPECT_EQ(results["requestSleepBank"]["wakeTime"], "2026-06-10T04:48:00.000Z");
    EXPECT_EQ(results["requestSleepBank"]["bankPercent"].dump(), "0.9811828");  // single precision
    EXPECT_EQ(run("today").status, 0);
    EXPECT_EQ(readFile(storeFile()), store);
    EXPECT_EQ(run("ask latest-bedtime").status, 0);
    EXPECT_THAT(json::parse(run("store show").output)["cachedSleepBankUpdate"], "2026-06-10T06:30:00.000Z");
}

TEST_F(Command, DrawsTheMorningIntoAFile) {
    run("demo");
    const std::string picture = run("today --svg").output;
    EXPECT_EQ(picture, readFile(LUNABROOK_PICTURE)) << "the picture of README: script/morning-picture draws it anew";
    const std::string file = inFolder("morning.svg");
    const auto into = [this](const std::string& target) { return run("today --svg --output '" + target + "'"); };
    for (const auto mode : {std::filesystem::perms(0600), std::filesystem::perms(0644)}) {
        const Outcome drawn = into(file);
        EXPECT_EQ(drawn.status, 0) << drawn.error;
        EXPECT_EQ(drawn.output, "");
        EXPECT_EQ(readFile(file), picture);
        EXPECT_EQ(std::filesystem::status(file).permissions(), mode);
        writeFile(file, "an old one");
        std::filesystem::permissions(file, std::filesystem::perms(0644));
    }
    std::filesystem::create_symlink("morning.svg", inFolder("link.svg"));
    EXPECT_EQ(into(inFolder("link.svg")).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(inFolder("link.svg")));
    EXPECT_EQ(readFile(file), picture);
    for (const std::string target : {"/dev/null", "/dev/full", "/nowhere/morning.svg", "/", "preferences"}) {
        const std::string name = target == "preferences" ? preferences().string() : target;
        const Outcome failed = into(name);
        EXPECT_EQ(failed.status, 1) << name;
        EXPECT_THAT(failed.error, StartsWith("lunabrook: \"" + name + "\" cannot be written: "));
    }
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    const Outcome full = run("today --svg --output '" + file + "'", kPinned, "ulimit -f 1;");
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(readFile(file), picture);
    for (const auto& entry : std::filesystem::directory_iterator(inFolder(""))) {
        EXPECT_THAT(entry.path().filename(), testing::AnyOf("morning.svg", "link.svg", "preferences", "error"));
    }
    // A name of the system's for a pipe leads to no file.
    EXPECT_THAT(run("today --svg --output /dev/stdout 2>&1 | cat").output, HasSubstr("it is no regular file"));
}

TEST_F(Command, ShowsTheMorningAsOneObject) {
    EXPECT_EQ(json::parse(run("today --json").output)["rings"],
              json({{"title", "Sleep Rating"}, {"sentence", "No Data"}, {"content", nullptr}}));
    run("demo");
    const std::string line = run("today --json").output;
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    const json today = json::parse(line);
    EXPECT_EQ(today["direction"], "ltr");
    EXPECT_EQ(today["rings"]["sentence"], "2 sleep rings closed. Today's sleep rating is 98%.");
    EXPECT_EQ(today["rings"]["content"]["rings"][2],
              json({{"name", "Deep"}, {"fill", 1.04}, {"percent", "104%"}, {"value", "1h 18m"}}));
    EXPECT_EQ(today["readiness"]["content"]["signals"][0],
              json({{"name", "HRV"}, {"value", "58 ms"}, {"difference", "6 above baseline"}, {"tint", "favourable"}}));
    EXPECT_EQ(today["respiration"]["content"]["change"], "fall");
    EXPECT_EQ(today["bank"]["content"]["moments"][0], json({{"name", "Tonight's Bedtime"},
                                                            {"time", "9:51\u202FPM"},
                                                            {"remark", "Time until bed"},
                                                            {"remarkedTime", "13h 21m"}}));
}

TEST_F(Command, ImportsAnotherListUnderTheLock) {
    run("ask lights-off");
    writeFile(inFolder("more.plist"),
              "<plist><dict><key>readyStars</key><true/><key>data</key><data>AAH/</data><key>none</key><real>nan</real>"
              "<key>all</key><array><integer>-1</integer><real>0.25</real><string>é</string></array></dict></plist>");
    EXPECT_EQ(run("store import '" + inFolder("more.plist") + "'").status, 0);
    EXPECT_EQ(json::parse(run("store show").output), json({{"activeLightSwitch", "2026-06-10T06:30:00.000Z"},
                                                           {"all", {-1, 0.25, "é"}},
                                                           {"data", "AAH/"},
                                                           {"none", nullptr},
                                                           {"readyStars", true}}));
    writeFile(inFolder("bad.plist"), "<plist><array/></plist>");
    const Outcome bad = run("store import '" + inFolder("bad.plist") + "'");
    EXPECT_EQ(bad.status, 2);
    EXPECT_THAT(bad.error, HasSubstr("whose root is not a dictionary; nothing was imported"));
    EXPECT_THAT(run("store import /proc/self/mem").error, HasSubstr("cannot be read: Input/output error; nothing was"));
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
    EXPECT_EQ(run("ask", kPinned, "printf 'readiness\\nlights on\\n' |").status, 3);
}

// Once a full disk or a reader that went away ended in 0.
TEST_F(Command, OutputThatCannotBeWrittenIsAFailure) {
    run("demo");
    writeFile(inFolder("preferences/watch/application.plist"), "");
    const std::string pipe = "'" + inFolder("pipe") + "'";
    const std::string pipeWithoutReader =
        "rm -f " + pipe + "; mkfifo " + pipe + "; exec 4<>" + pipe + " 5>" + pipe + " 4>&-; ";
    const std::string twice = "printf 'lights-off\\nreadiness\\n' |";
    for (const std::string verb : {"ask readiness", "ask --json readiness", "ask", "metrics", "today", "today --svg",
                                   "today --json", "intents", "store show", "watch push", "--help", "--version"}) {
        const Outcome full = run(verb + " >/dev/full", kPinned, twice);
        EXPECT_EQ(full.status, 1) << verb;
        EXPECT_EQ(full.error, "lunabrook: the output cannot be written: No space left on device\n") << verb;
        EXPECT_EQ(run(verb + " >&-", kPinned, twice).status, 1) << verb;
        const Outcome hungUp = run(verb + " >&5", kPinned, pipeWithoutReader + twice);
        EXPECT_EQ(hungUp.status, 1) << verb;
        EXPECT_EQ(hungUp.error, "") << verb;
    }
}

TEST_F(Command, FullDiskKeepsTheStoreAndTheAnswer) {
    writeFile(storeFile(), "<plist><dict><key>a</key><string>" + std::string(600, 'x') + "</string></dict></plist>");
    const std::string store = readFile(storeFile());
    const Outcome full = run("ask lights-off", kPinned, "ulimit -f 1;");  // no file beyond 512 bytes
    EXPECT_EQ(full.status, 3);
    EXPECT_EQ(full.output, "Good Night\n");
    EXPECT_THAT(full.error, HasSubstr("cannot be written and stays as it was"));
    EXPECT_EQ(readFile(storeFile()), store);
    EXPECT_FALSE(std::filesystem::exists(storeFile().string() + ".new"));
}

#ifndef LUNABROOK_SANITIZED  // needs all the memory that there is
TEST_F(Command, SaysThatMemoryRanOut) {
    PropertyList list;
    list.set("a", Data(60U << 20));
    writeFile(storeFile(), std::get<std::string>(list.binary()));
    const Outcome asked = run("ask readiness", kPinned, "ulimit -v 120000;");
    EXPECT_EQ(asked.status, 3);
    EXPECT_EQ(asked.error, "lunabrook: there is not enough memory\n");
}
#endif

TEST_F(Command, TwoDemosAtOnceMakeOneStore) {
    for (int round = 0; round < 10; ++round) {
        const std::string demo = "'" LUNABROOK_PROGRAM "' --preferences '" + preferences().string() + "' demo 2>&1";
        const Ended both = shell("(" + demo + "; echo $?) & " + demo + "; echo $?; wait");
        const auto count = [&both](const char* what) {
            std::size_t times = 0;
            for (std::size_t at = both.output.find(what); at != std::string::npos;
                 at = both.output.find(what, at + 1)) {
                ++times;
            }
            return times;
        };
        EXPECT_EQ(count("A made-up week"), 1U) << both.output;
        EXPECT_EQ(count("a store is there already"), 1U) << both.output;
        std::filesystem::remove_all(preferences());
    }
}

TEST_F(Command, DamagedStringTableIsToldWithItsLine) {
    writeFile(inFolder("bundle/en.lproj/Localizable.strings"), "\"No Data\" = \"Nothing\";\n\"Good Night\" \"x\";\n");
    const Outcome asked = run("ask readiness", kPinned + (" --bundle '" + inFolder("bundle") + "' "));
    EXPECT_EQ(asked.status, 3);
    EXPECT_EQ(asked.output, "No Data\n");
    EXPECT_THAT(asked.error, HasSubstr("Localizable.strings:2: "));
}

TEST_F(Command, FindsTheTextsBesideItselfOrInItsPrefix) {
    const std::filesystem::path prefix = folder_.path() / "prefix";
    std::filesystem::create_directories(prefix / "bin/resources");  // somebody else's
    std::filesystem::copy_file(LUNABROOK_PROGRAM, prefix / "bin/lunabrook");
    writeFile(prefix / "share/lunabrook/en.lproj/Localizable.strings", "\"No Data\" = \"Installed\";");
    const std::string call = "'" + (prefix / "bin/lunabrook").string() + "' --preferences '" + preferences().string() +
                             "' --language en ask readiness";
    EXPECT_EQ(shell(call).output, "Installed\n");
    writeFile(prefix / "bin/resources/Intents.json", "{}");
    EXPECT_EQ(shell(call).output, "No Data\n");
}

TEST_F(Command, WrongCallsSayWhatWouldBeRight) {
    const struct {
        const char* arguments;
        const char* says;
    } rows[] = {
        {"ask readines", "did you mean readiness"},
        {"aks readiness", "did you mean ask?"},
        {"toxxy", "there is no verb \"toxxy\" (`lunabrook --help`"},
        {"metrics requestSp02", "no metric is called \"requestSp02\"; did you mean blood-oxygen? ("},
        {"metrics request", "did you mean blood-oxygen, sleep-fuel or sleep-rings? ("},
        {"--now rubbish ask readiness", "2026-06-10T08:30:00+02:00"},
        {"--now 2026-06-10 ask readiness", "say one like 2026-06-10T08:30, "},
        {"--now 2026-6-1T8:3:0Z ask readiness", "--now is no moment"},
        {"--time-zone Europe/Bern ask readiness", "Europe/Berlin"},
        {"--locale xx_YY ask readiness", "de_DE"},
        {"", "--help"},
        {"--nwo 2026-06-10T08:30:00Z today", "there is no option --nwo; did you mean --now? (`lunabrook today --help`"},
        {"today --locale", "--locale needs a value: --locale ID"},
        {"ask --json=yes readiness", "--json takes no value"},
        {"today --svg --json", "--svg or --json, not both"},
        {"today --width 360", "--width is for the picture: lunabrook today --svg --width 360"},
        {"today --json --output x.svg", "--output is for the picture: lunabrook today --svg"},
        {"today --svg --width 319", "--width is a number of pixels from 320 to 1600, not \"319\""},
        {"today --svg --width 1601", "from 320 to 1600"},
        {"today --svg --width 1e3", "from 320 to 1600"},
        {"today --svg --output ''", "--output names no file"},
        {"today monday", "today takes no \"monday\""},
        {"store", "store needs a verb of its own: show or import (`lunabrook store --help`"},
        {"store shw", "there is no verb \"shw\" of store; did you mean show?"},
        {"store import", "store import needs a FILE"},
        {"store import /nowhere", "\"/nowhere\" cannot be read: No such file or directory"},
        {"--bundle /nowhere today", "--bundle names no folder: \"/nowhere\""},
        {"\"$(printf -- '--a\\033b')\" today", "there is no option --a\\x1bb"},
        {"--preferences /dev/null today", "the store's folder is a file: \"/dev/null\""},
        {"ask \"$(printf 'a\\033[2Jb')\"", "answers to \"a\\x1b[2Jb\""},
        // Nothing is answered when one of several is unclear.
        {"ask lights-off 'How ready is my dinner?' 'Good night'", "nearest phrases are \"How ready am I today?\", \""},
        // An empty variable in the call: the next word was its value once, and the store that of another folder.
        {"--preferences= ask lights-off", "--preferences names no folder: \"\""},
        {"--preferences '' ask lights-off", "--preferences names no folder: \"\""},
        {"today --svg --output= --width=400", "--output names no file"},
        {"--language , today", "--language names no language: \",\""},
        {"--bundle '' today", "--bundle names no folder: \"\""},
        {"--width 400 today --svg", "--width goes behind the verb: lunabrook today --width"},
        {"ask lights-off ''", "no intent answers to \"\""},
        {"ask lights-off 'lights on'", "answers to \"lights on\"; the nearest phrases are \"Lights off\""},
        {"ask lights-off 'play some music'", "answers to \"play some music\" (`lunabrook intents`"},
        {"ask lights-off lightsof", "no intent is called \"lightsof\"; did you mean lights-off"},
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
    EXPECT_EQ(run("--help").status, 0);
}

TEST_F(Command, TakesTheDeviceFromTheEnvironment) {
    const auto ran = [&](const std::string& environment, const char* verb) {
        return shell("env -u LUNABROOK_PREFERENCES -u LC_ALL -u LC_TIME -u LANG -u LANGUAGE " + environment +
                     " XDG_DATA_HOME='" + folder_.path().string() + "' '" LUNABROOK_PROGRAM "' --bundle '" +
                     inFolder("bundle") + "' --now 2026-06-10T23:00:00Z " + verb)
            .output;
    };
    writeFile(inFolder("bundle/de.lproj/Localizable.strings"), "\"Try to be in bed by %@\" = \"Ins Bett um %@\";");
    ran("TZ=Asia/Tokyo", "demo");
    const std::pair<const char*, const char*> rows[] = {
        // Of 11 June in Tokyo, in the clock of the first variable that says one and in the words of LANGUAGE.
        {"TZ=Asia/Tokyo LC_TIME=nl_NL.UTF-8 LANG=en_US.UTF-8", "Try to be in bed by 21:51\n"},
        {"TZ=Asia/Tokyo LC_TIME=de_DE.UTF-8 LANG=en_US.UTF-8", "Try to be in bed by 21:51\n"},
        {"TZ=Asia/Tokyo LC_MESSAGES=de_AT.UTF-8 LANG=en_US.UTF-8", "Ins Bett um 9:51\u202FPM\n"},
        {"TZ=Asia/Tokyo LANG=de_DE.UTF-8", "Ins Bett um 21:51\n"},
        {"TZ=:Asia/Tokyo LANG=en_GB.UTF-8", "Try to be in bed by 21:51\n"},
        {"TZ=Asia/Tokyo LC_TIME= LANG=en_GB LANGUAGE=fr:de_AT::en", "Ins Bett um 21:51\n"},
        {"TZ=Asia/Tokyo LC_ALL=C LC_TIME=de_DE", "Try to be in bed by 9:51\u202FPM\n"},
        {"TZ=Asia/Tokyo LANG=POSIX", "Try to be in bed by 9:51\u202FPM\n"},
        {"TZ=Asia/Tokyo", "Try to be in bed by 9:51\u202FPM\n"},
    };
    for (const auto& [environment, answer] : rows) {
        EXPECT_EQ(ran(environment, "ask latest-bedtime"), answer) << environment;
    }
    const std::string folder = folder_.path().string();
    const std::pair<std::string, const char*> stores[] = {
        {"XDG_DATA_HOME='" + folder + "'", "lunabrook"},
        {"LUNABROOK_PREFERENCES='" + folder + "/own'", "own"},
        {"XDG_DATA_HOME= HOME='" + folder + "/home'", "home/.local/share/lunabrook"},
    };
    for (const auto& [environment, store] : stores) {
        shell("env -u LUNABROOK_PREFERENCES " + environment + " '" LUNABROOK_PROGRAM "' ask lights-off");
        EXPECT_TRUE(std::filesystem::exists(folder_.path() / store / "group.kestrovan.Lunabrook.plist")) << store;
    }
    const Ended homeless = shell("env -i '" LUNABROOK_PROGRAM "' ask lights-off 2>&1");
    EXPECT_EQ(homeless.status, 2);
    EXPECT_THAT(homeless.output, HasSubstr("there is no HOME to keep the store in"));
}

// It may have been set for other programs: what does not hold falls back, with a line for each.
TEST_F(Command, FallsBackWhereTheEnvironmentDoesNotHold) {
    const std::filesystem::path zones = folder_.path() / "zones";
    std::filesystem::create_directories(zones);
    std::filesystem::copy_file("/usr/share/zoneinfo/Asia/Tokyo", zones / "Home");
    const std::string zoneData = "TZDIR='" + zones.string() + "' LC_ALL=C TZ=";
    const struct {
        std::string environment;
        const char* result;
        const char* error;
    } rows[] = {
        {"TZ=UTC LC_ALL=wa_BE.UTF-8", "\"latestBedTime\": \"9:51\u202FPM\"",
         "lunabrook: LC_ALL names no known locale: \"wa_BE.UTF-8\"; formats are American English\n"},
        {"TZ=UTC LC_ALL=de_XY", "\"latestBedTime\": \"21:51\"", ""},
        {"TZ=UTC LC_ALL=sr_RS.UTF-8@latin", "\"timeUntilBedLabel\": \"13 \u010D i 21 m\"", ""},
        {zoneData + "Home", "\"wakeTime\": \"2026-06-09T21:48:00.000Z\"", ""},
        {zoneData + "EST5EDT,M3.2.0,M11.1.0", "requestSleepBank",
         "lunabrook: TZ names no zone of this system: \"EST5EDT,M3.2.0,M11.1.0\"; the system's own zone is used\n"},
    };
    for (const auto& row : rows) {
        const std::string program = "env -u LANGUAGE " + row.environment + " '" LUNABROOK_PROGRAM "' --preferences '" +
                                    inFolder("fallback") + "' --now 2026-06-10T08:30Z ";
        const Ended bank = shell(program + "demo >/dev/null 2>&1; " + program + "metrics requestSleepBank 2>'" +
                                 inFolder("error") + "'");
        EXPECT_EQ(bank.status, 0) << row.environment;
        EXPECT_THAT(bank.output, HasSubstr(row.result)) << row.environment;
        EXPECT_EQ(readFile(inFolder("error")), row.error) << row.environment;
        std::filesystem::remove_all(inFolder("fallback"));
    }
}

TEST_F(Command, AnswersEachLineOfItsInput) {
    run("demo");
    const Outcome lines =
        run("ask", kPinned, "printf ' readiness\\r\\n\\nlights on\\nlights off%70000s\\n  How well did I sleep?' |");
    EXPECT_EQ(lines.status, 2);
    EXPECT_EQ(lines.output, "Today's Readiness is good.\n2 sleep rings closed. Today's sleep rating is 98%.\n");
    EXPECT_THAT(lines.error, AllOf(StartsWith("lunabrook: no intent answers to \"lights on\""),
                                   HasSubstr("a line is longer than anybody speaks")));
    EXPECT_EQ(run("ask", kPinned, "true |").status, 0);
    const Outcome unreadable = run("ask </");
    EXPECT_EQ(unreadable.status, 1);
    EXPECT_THAT(unreadable.error, HasSubstr("the input cannot be read"));
}

TEST_F(Command, TalksToAPersonAtATerminal) {
    const auto talk = [this](const std::string& said, const std::string& ask) {
        writeFile(inFolder("said"), said);
        return shell("script -qec \"stty -echo; '" LUNABROOK_PROGRAM "' --preferences '" + preferences().string() +
                     "'" + kPinned + " --bundle '" + inFolder("bundle") + "' " + ask + "\" /dev/null <'" +
                     inFolder("said") + "'");
    };
    writeFile(inFolder("bundle/en.lproj/Localizable.strings"), "\"Good Night\" = \"Good\\U001b[2JNight\";");
    writeFile(inFolder("bundle/en.lproj/Sentences.yaml"), readFile(LUNABROOK_RESOURCES "/en.lproj/Sentences.yaml"));
    writeFile(inFolder("bundle/Intents.json"), readFile(LUNABROOK_RESOURCES "/Intents.json"));
    const Ended whole = talk("good night\nlights on\nhelp\nquit\nreadiness\n", "ask");
    EXPECT_EQ(whole.status, 2);
    EXPECT_THAT(whole.output,
                AllOf(HasSubstr("Good\uFFFD[2JNight\r\n"), HasSubstr("no intent answers to \"lights on\""),
                      HasSubstr("sleep-rings        Sleep Rings"), testing::Not(HasSubstr("No Data"))));
    EXPECT_THAT(run("store show activeLightSwitch").output, HasSubstr("2026-06-10T06:30"));
    EXPECT_THAT(talk("help\nquit\n", "ask --json >'" + inFolder("answers") + "'").output, HasSubstr("Sleep Rings"));
    EXPECT_EQ(readFile(inFolder("answers")), "");
}

// A name takes no definitions and no templates; a damaged resource is no reason to keep an answer back.
TEST_F(Command, AnswersNamesWithoutTheDefinitions) {
    const std::string device = kPinned + (" --bundle '" + inFolder("bundle") + "' ");
    writeFile(inFolder("bundle/Intents.json"), "{\n[");
    writeFile(inFolder("bundle/en.lproj/Sentences.yaml"), "language: en\nintents: [");
    EXPECT_EQ(run("ask readiness", device).status, 0);
    const Outcome phrase = run("ask 'Turn off the lights'", device);
    EXPECT_EQ(phrase.status, 3);  // the gravest: an unclear phrase, for want of templates
    EXPECT_THAT(phrase.error, HasSubstr("en.lproj/Sentences.yaml:2: is not YAML: "));
    const Outcome list = run("intents", device);
    EXPECT_EQ(list.status, 3);
    EXPECT_THAT(list.error, HasSubstr("Intents.json:2: is not JSON"));
    EXPECT_EQ(list.output, "");
}

TEST_F(Command, PushesTheLabelsOfTheMorningToTheWatch) {
    run("demo");
    const std::string store = readFile(storeFile());
    const std::filesystem::path inbox = preferences() / "watch";
    writeFile(inbox, "a file");
    const auto push = [&](int status, const std::string& says) {
        const Outcome pushed = run("watch push");
        EXPECT_EQ(pushed.status, status) << says;
        EXPECT_THAT(status == 0 ? pushed.output : pushed.error, AllOf(HasSubstr(says), EndsWith("\n")));
    };
    push(1, "lunabrook: nothing was delivered: " + inbox.string() + " is not a folder");
    std::filesystem::remove(inbox);
    push(1, "no watch is paired");
    std::filesystem::create_directories(inbox);
    push(1, "the watch application is not installed");
    writeFile(inbox / "application.plist", "");
    push(0, "Delivered to the watch: the labels of 7 metrics\n");
    EXPECT_EQ(readFile(storeFile()), store);
    const Dictionary context =
        std::get<Dictionary>(dictionaryFromPropertyList(readFile(inbox / "application-context.plist")));
    const std::pair<const char*, const char*> labels[] = {
        {"requestOctane",
         "hrvDifLabel: 4 above baseline | hrvLabel: 61 ms | rating: Plus | wakingDifLabel: 1 below baseline | "
         "wakingLabel: 54 bpm"},
        {"requestQuality",
         "ringBPMLabel: 54 | ringDeepLabel: 1h 18m | ringQualityLabel: 1h 34m | ringSleepLabel: 7h 35m"},
        {"requestReadiness",
         "hrvDifLabel: 6 above baseline | hrvLabel: 58 ms | rating: Good | wakingDifLabel: 2 below baseline | "
         "wakingLabel: 55 bpm"},
        {"requestRespRate",
         "averageRespRateLabel: 14.4 BrPM | averageRespRateLabel7: ⑦ 14.8 | averageRespRateRangeLabel: 12.1 - 17.6 | "
         "averageRespRateRangeLabel7: ⑦ 11.9 - 18.2 | averageRespRateWidgetLabel: 14.4  | difLabel: 0.4↘ | "
         "maxRespRateLabel: 17.6 | minRespRateLabel: 12.1 | title: Respiration Rate"},
        {"requestSleepBank",
         "latestBedTime: 9:51\u202FPM | timeUntilBedLabel: 13h 21m | timeUntilWakeLabel: 22h 18m | "
         "wakeTimeLabel: 6:48\u202FAM"},
        {"requestSpO2",
         "averageSpO2Label: 96.2% | averageSpO2Label7: ⑦ 95.8% | averageSpO2RangeLabel: 92% - 99% | "
         "averageSpO2RangeLabel7: ⑦ 90% - 99% | difLabel: 0.4%↗ | maxSpO2Label: 99% | minSpO2Label: 92% | "
         "title: Sleep SpO2"},
        {"requestWristTemp",
         "wristTempAverage28Label: 34.48° | wristTempDifLabel: 0.14°↗ | wristTempTodayLabel: 34.62°"},
    };
    EXPECT_EQ(context.size(), std::size(labels));
    for (const auto& [request, shownLabels] : labels) {
        const Dictionary* texts = dictionaryForKey(context, request);
        EXPECT_EQ(texts != nullptr ? test::shown(*texts) : "missing", shownLabels) << request;
    }
    std::filesystem::remove(inbox / "application-context.plist");
    std::filesystem::create_directories(inbox / "application-context.plist");
    EXPECT_NE(run("watch push").status, 0) << "a context that cannot be written";
}

TEST_F(Command, ListsTheIntentsInTheDevicesLanguage) {
    std::filesystem::create_directories(inFolder("bundle"));
    std::filesystem::copy_file(LUNABROOK_RESOURCES "/Intents.json", inFolder("bundle/Intents.json"));
    std::filesystem::create_directories(inFolder("bundle/en.lproj"));
    std::filesystem::copy_file(LUNABROOK_RESOURCES "/en.lproj/Sentences.yaml",
                               inFolder("bundle/en.lproj/Sentences.yaml"));
    writeFile(inFolder("bundle/ja.lproj/Intents.strings"), "\"Readiness\" = \"\u6E96\u5099\";");
    const Outcome list = run("intents", kPinned + (" --language ja --bundle '" + inFolder("bundle") + "' "));
    EXPECT_EQ(std::count(list.output.begin(), list.output.end(), '\n'), 9);
    const std::string objects = run("intents --json").output;
    const json first = json::parse(objects.substr(0, objects.find('\n')));
    EXPECT_EQ(first["class"], "LightsOffIntent");
    EXPECT_EQ(first["failure"], json({{"code", 5}, {"text", "The moment you went to bed could not be recorded."}}));
    EXPECT_EQ(first["parameters"], json({{"response", "string"}}));
    EXPECT_THAT(list.output, HasSubstr("readiness          \u6E96\u5099               \"How ready am I today?\"\n"));
    EXPECT_THAT(list.output, HasSubstr("wrist-temperature  Wrist Temperature  \"What is my wrist temperature?\"\n"));
}

}  // namespace
}  // namespace lunabrook
