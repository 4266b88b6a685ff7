#include "platform/text/drawn_text.h"

#include <gtest/gtest.h>

namespace lunabrook {
namespace {

TEST(DrawableText, IsTextThatXmlHolds) {
    const struct {
        std::string text, drawable;
    } rows[] = {{"睡眠 é 🥇", "睡眠 é 🥇"},
                {"a\r\n\tb", "a   b"},
                {std::string("\0\x1b\x7f", 3), "\uFFFD\uFFFD\uFFFD"},
                {"\xC2\x85\xEF\xBF\xBE\xEF\xBF\xBF", "\uFFFD\uFFFD\uFFFD"},
                {"\xFFz\xED\xA0\x80", "\uFFFDz\uFFFD\uFFFD\uFFFD"},
                {"\xEF\xBB\xBF"
                 "a",
                 "a"},
                {"o\u0302\u0301\u0323\u0301\u0301n", "o\u0302\u0301\u0323n"}};
    for (const auto& row : rows) {
        EXPECT_EQ(drawableText(row.text), row.drawable);
    }
}

TEST(TextFittedToEms, CutsBetweenWholeCharacters) {
    EXPECT_EQ(textFittedToEms("睡眠評価", 4), "睡眠評価");
    EXPECT_EQ(textFittedToEms("睡眠評価", 3.9), "睡眠…");
    EXPECT_EQ(textFittedToEms("睡眠評価", 0), "…");
    EXPECT_EQ(textFittedToEms("睡 眠評価", 2.4), "睡…");
    EXPECT_EQ(textFittedToEms("e\u0301e\u0301e\u0301e\u0301", 2), "e\u0301…");
    EXPECT_EQ(textFittedToEms("👨\u200D👩\u200D👧👨\u200D👩\u200D👧", 6), "👨\u200D👩\u200D👧…");
    EXPECT_LT(widthInEms("iii"), widthInEms("mmm"));
    EXPECT_EQ(widthInEms("\u200B\u0301"), 0);
}

}  // namespace
}  // namespace lunabrook
