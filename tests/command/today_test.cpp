#include "command/today.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "command/demo_week.h"
#include "command/page.h"
#include "metrics/group_metrics.h"
#include "platform/text/display_width.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

using test::TestDevice;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(DisplayWidth, CountsWideJoinedAndInvisibleCharacters) {
    const struct {
        const char* text;
        int columns;
    } rows[] = {{"", 0},
                {"abc", 3},
                {"睡眠", 4},
                {"\u24C7 ★⭒", 4},
                {"🥇", 2},
                {"\U0001F486\u200D\u2642\uFE0F", 2},
                {"\u2642\uFE0F", 2},
                {"\uFE0F", 0},
                {"e\u0301", 1},
                {"\xFF", 1},
                {"9:41\u202FPM", 7}};
    for (const auto& row : rows) {
        EXPECT_EQ(displayWidth(row.text), row.columns) << row.text;
    }
    EXPECT_EQ(textFittedTo("睡眠評価", 8), "睡眠評価");
    EXPECT_EQ(textFittedTo("睡眠評価", 7), "睡眠評…");
    EXPECT_EQ(textFittedTo("睡眠評価", 6), "睡眠…");
    EXPECT_EQ(textFittedTo("abc", 1), "…");
}

TEST(Page, LinesUpWhateverTheColumnsHold) {
    Page page(12, false);
    page.addTable({{6}, {.columns = 5, .isRight = true}}, {{{"睡眠"}, {"7"}}, {{"a\x1b[2J\u009B"}, {"104"}}});
    page.addTable({{6}, {.rank = 1}, {.rank = 2}, {}}, {{{"a"}, {"bb"}, {"ccc"}, {"dd"}}, {{"a"}, {""}, {""}, {"d"}}});
    page.addTable({{6}, {}, {}}, {{{""}, {"over", Ink::plain, true}}, {{"a"}, {"b"}, {"c"}}, {{"lonely"}}});
    page.addTable({{}}, {{{std::string(20, 'a')}}});
    EXPECT_EQ(page.text(),
              "睡眠    7\na\uFFFD[…  104\n"
              "a     bb  dd\na         d\n"
              "      over\na     b  c\nlon…\n"
              "aaaaaaaaaaa…\n");
    Page coloured(80, true);
    const Row inked = {{"a", Ink::heading}, {"b", Ink::quiet}, {"c", Ink::good}, {"d"},
                       {"e", Ink::bad},     {"f", Ink::rise},  {"g", Ink::fall}};
    coloured.addTable(std::vector<Column>(inked.size(), Column{3}), {inked});
    EXPECT_EQ(coloured.text(),
              "\x1b[1ma\x1b[0m  \x1b[2mb\x1b[0m  \x1b[32mc\x1b[0m  d  \x1b[31me\x1b[0m  \x1b[33mf\x1b[0m  "
              "\x1b[36mg\x1b[0m\n");
}

std::string page(const Device& device, bool hasColours = false, int columns = 80) {
    return todayText(glanceAt(device), columns, hasColours);
}

// Once the page multiplied in double and showed 85% where the sentence says 84%.
TEST(Today, ShowsThePercentageThatTheSentenceSays) {
    TestDevice device;
    device.store(demoWeek(device));
    device.store({{"watchTrackDict", Dictionary{{"rawSynchTime", device->now()},
                                                {"rawSleepTime", 36000.0},
                                                {"rawRingRating", "0.38|1|1"},
                                                {"rawRingValues", "6000|4500|54"}}}});
    EXPECT_EQ(*stringForKey(*GroupMetrics(device).requestQuality(), "siriLabel"),
              "3 sleep rings closed. Today's sleep rating is 84%.");
    EXPECT_THAT(page(device), HasSubstr("\nSleep Rating           ████████████████░░░░   84%\n"));
}

TEST(Today, ShowsTheWholeMorningInEnglish) {
    TestDevice device;
    device.store(demoWeek(device));
    EXPECT_EQ(page(device),
              "Wednesday, Jun 10, 2026\n"
              "\n"
              "Sleep Rating           ███████████████████░   98%\n"
              "  Sleep                ███████████████████░   98%  7h 35m\n"
              "  REM                  ██████████████████░░   94%  1h 34m\n"
              "  Deep                 ████████████████████  104%  1h 18m\n"
              "  Sleeping heart rate  ████████████████████  104%  54 bpm\n"
              "\n"
              "Today's Readiness      ★★★⭒⭒  3.98  Good\n"
              "  HRV                  58 ms      6 above baseline\n"
              "  Waking heart rate    55 bpm     2 below baseline\n"
              "\n"
              "Sleep Fuel Rating      ★★★⭒⭒  3.26  Plus\n"
              "  HRV                  61 ms      4 above baseline\n"
              "  Sleeping heart rate  54 bpm     1 below baseline\n"
              "\n"
              "                       Average    Range        Seven nights\n"
              "Sleep SpO2             96.2%      92% - 99%    95.8%    90% - 99%      0.4%↗\n"
              "Respiration Rate       14.4 BrPM  12.1 - 17.6  14.8     11.9 - 18.2    0.4↘\n"
              "Temperature            34.62°     Baseline 34.48°                      0.14°↗\n"
              "\n"
              "Sleep Bank             ███████████████████░   98%  Debt 1.9%\n"
              "  Tonight's Bedtime    9:51\u202FPM    Time until bed 13h 21m\n"
              "  Wake time            6:48\u202FAM    Time until waking 22h 18m\n"
              "  Average bedtime      10:28\u202FPM   17m earlier\n");
}

TEST(Today, LosesColumnsOnANarrowTerminalAndNoEndsOfLines) {
    TestDevice device;
    device.store(demoWeek(device));
    for (int columns = 48; columns <= 80; ++columns) {
        std::istringstream lines(page(device, false, columns));
        for (std::string line; std::getline(lines, line);) {
            EXPECT_LE(displayWidth(line), columns) << line;
            EXPECT_THAT(line, Not(HasSubstr("…"))) << columns;
        }
    }
    EXPECT_THAT(
        page(device, false, 62),
        HasSubstr("Average    Range        Seven nights\nSleep SpO2             96.2%      92% - 99%    95.8%    "
                  "0.4%↗\n"));
    EXPECT_THAT(page(device, false, 48), HasSubstr("Average\nSleep SpO2             96.2%      0.4%↗\n"));
    EXPECT_THAT(page(device, false, 48), HasSubstr("  Sleeping heart rate  ██████████  104%  54 bpm\n"));
}

// Whatever the hour, the made-up week is the report day's; one of the days loses an hour.
TEST(Today, ShowsTheMadeUpWeekAtAnyHour) {
    constexpr std::int64_t kTimes[][3] = {{0, 4, 0},   {3, 30, 0}, {6, 47, 0},  {12, 0, 0},
                                          {20, 59, 0}, {21, 0, 0}, {21, 0, 30}, {23, 59, 0}};
    for (const char* zone : {"America/New_York", "Pacific/Kiritimati", "Asia/Kathmandu"}) {
        for (const auto& [hour, minute, second] : kTimes) {
            TestDevice device({.timeZone = zone});
            device.setNow(*device->timeZone().dateFromComponents({2026, 3, 8, hour, minute, second}));
            device.store(demoWeek(device));
            EXPECT_THAT(page(device), Not(HasSubstr("No Data"))) << zone << " " << hour << ":" << minute;
            EXPECT_TRUE(GroupMetrics(device).requestConsistencyDict()) << zone << " " << hour << ":" << minute;
        }
    }
}

TEST(Today, FitsAndLinesUpInAWideScript) {
    TestDevice device({.locale = "ja_JP",
                       .languages = {"ja"},
                       .translations = {{"Sleep Rating", "睡眠評価"},
                                        {"Today's Readiness", "今日のコンディションはいかがですか"},
                                        {"Time until bed", "就寝までの時間"}}});
    device.store(demoWeek(device));
    const std::string shown = page(device);
    EXPECT_THAT(shown, StartsWith("2026年6月10日水曜日\n\n睡眠評価               █"));
    EXPECT_THAT(shown, HasSubstr("\n今日のコンディション…  ★"));
    std::istringstream lines(shown);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(displayWidth(line), 80) << line;
    }
}

TEST(Today, ColoursTintsAndChanges) {
    TestDevice device;
    Dictionary bank = *demoWeek(device).at("bankDict").dictionary();
    const Dictionary signals{
        {"key", "20260610"}, {"hrvAverage", 52}, {"hrvTodayVal", 40}, {"bpmAverage", 57}, {"bpmTodayVal", 55}};
    bank.insert_or_assign("readyDict", signals);
    device.store({{"bankDict", bank}});
    const std::string shown = page(device, true);
    for (const char* inked : {"\x1b[31m12 below baseline\x1b[0m", "\x1b[32m2 below baseline\x1b[0m",
                              "\x1b[33m0.4%↗\x1b[0m", "\x1b[36m0.4↘\x1b[0m"}) {
        EXPECT_THAT(shown, HasSubstr(inked));
    }
    EXPECT_THAT(page(device), Not(HasSubstr("\x1b")));
}

TEST(Today, SaysQuietlyWhatIsMissing) {
    TestDevice device;
    EXPECT_EQ(page(device),
              "Wednesday, Jun 10, 2026\n\n"
              "Sleep Rating           No Data\n\n"
              "Today's Readiness      No Data\n\n"
              "Sleep Fuel Rating      No Data\n\n"
              "Sleep SpO2             No Data\n"
              "Respiration Rate       No Data\n"
              "Temperature            No Data\n\n"
              "Sleep Bank             No Data\n");
    // A bank without a usable wake time has a balance but no bedtime.
    device.store({{"bankDict", Dictionary{{"20260610", 25200.0}}}});
    EXPECT_THAT(page(device), HasSubstr("\n  Tonight's Bedtime    No Data\n"));
}

}  // namespace
}  // namespace lunabrook
