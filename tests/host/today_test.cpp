#include "host/today.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/demo_week.h"
#include "host/page.h"
#include "platform/display_width.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

using test::TestDevice;
using testing::HasSubstr;

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find('\n', start);
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

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

TEST(Page, KeepsToItsColumnsWithoutBlanksAtTheEnd) {
    Page page(false);
    page.add({{"睡眠", 6}, {"x", 4, Ink::good}, {"", 5}, {"end"}});
    page.add({{std::string(90, 'a')}, {"lost"}});
    page.add({{"a", 10}, {""}});
    EXPECT_EQ(page.text(), "睡眠  x        end\n" + std::string(79, 'a') + "…\na\n");
}

TEST(Today, ShowsTheWholeMorningInEnglish) {
    const TestDevice device;
    TestDevice full;
    full.store(demoWeek(full));
    EXPECT_EQ(todayText(full, false),
              "Sleep Rating          ███████████████████░   98%\n"
              "  Sleep               ███████████████████░   98%  7h 35m\n"
              "  REM                 ██████████████████░░   94%  1h 34m\n"
              "  Deep                ████████████████████  104%  1h 18m\n"
              "  bpm                 ████████████████████  104%  54\n"
              "\n"
              "Today's Readiness     ★★★⭒⭒ 3.98 Good\n"
              "  HRV                 58 ms      6 above baseline\n"
              "  bpm                 55 bpm     2 below baseline\n"
              "\n"
              "Sleep Fuel Rating     ★★★⭒⭒ 3.26 Plus\n"
              "  HRV                 61 ms      4 above baseline\n"
              "  bpm                 54 bpm     1 below baseline\n"
              "\n"
              "Sleep SpO2            96.2%      92% - 99%    ⑦ 95.8%  ⑦ 90% - 99%    0.4%↗\n"
              "Respiration Rate      14.4 BrPM  12.1 - 17.6  ⑦ 14.8   ⑦ 11.9 - 18.2  0.4↘\n"
              "Temperature           34.62°     Baseline 34.48°                      0.14°↗\n"
              "\n"
              "Sleep Bank            ███████████████████░   98%\n"
              "  Tonight's Bedtime   9:51\u202FPM    Time until bed 13h 21m\n"
              "  Wake time           6:48\u202FAM    22h 18m\n");
}

TEST(Today, FitsAndLinesUpInAWideScript) {
    TestDevice device({.locale = "ja_JP",
                       .languages = {"ja"},
                       .translations = {{"Sleep Rating", "睡眠評価"},
                                        {"Today's Readiness", "今日のコンディションはいかがですか"},
                                        {"Time until bed", "就寝までの時間"}}});
    device.store(demoWeek(device));
    const auto lines = linesOf(todayText(device, false));
    for (const std::string& line : lines) {
        EXPECT_LE(displayWidth(line), 80) << line;
    }
    EXPECT_EQ(displayWidth(lines.at(0).substr(0, lines.at(0).find("█"))), 22);
    EXPECT_EQ(displayWidth(lines.at(6).substr(0, lines.at(6).find("★"))), 22);
    EXPECT_THAT(lines.at(6), testing::StartsWith("今日のコンディション… "));
}

TEST(Today, ColoursTintsAndChanges) {
    TestDevice device;
    Dictionary week = demoWeek(device);
    Dictionary bank = *week.at("bankDict").dictionary();
    Dictionary ready = *bank.at("readyDict").dictionary();
    ready.insert_or_assign("hrvTodayVal", 40.0);
    bank.insert_or_assign("readyDict", ready);
    week.insert_or_assign("bankDict", bank);
    device.store(week);
    const std::string page = todayText(device, true);
    EXPECT_THAT(page, HasSubstr("\x1b[31m12 below baseline\x1b[0m"));
    EXPECT_THAT(page, HasSubstr("\x1b[32m2 below baseline\x1b[0m"));
    EXPECT_THAT(page, HasSubstr("\x1b[33m0.4%↗\x1b[0m"));
    EXPECT_THAT(page, HasSubstr("\x1b[36m0.4↘\x1b[0m"));
    EXPECT_EQ(todayText(device, false).find('\x1b'), std::string::npos);
}

TEST(Today, SaysQuietlyWhatIsMissing) {
    TestDevice device;
    const auto lines = linesOf(todayText(device, false));
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "Sleep Bank            No Data"), 1);
    EXPECT_EQ(
        std::count_if(lines.begin(), lines.end(), [](const std::string& line) { return line.ends_with("No Data"); }),
        7);
    // A bank without a usable wake time has a balance but no bedtime.
    device.store({{"bankDict", Dictionary{{"20260610", 25200.0}}}});
    EXPECT_THAT(todayText(device, false), HasSubstr("Tonight's Bedtime   No Data\n"));
}

}  // namespace
}  // namespace lunabrook
