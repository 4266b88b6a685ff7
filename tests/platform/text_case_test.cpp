#include "platform/text_case.h"

#include <gtest/gtest.h>

namespace lunabrook {
namespace {

struct Row {
    const char* name;
    const char* text;
    const char* expected;
};

TEST(TextCase, CapitalizesWords) {
    const Row rows[] = {
        {"apostrophe_goes_on", "tonight's bedtime", "Tonight's Bedtime"},
        {"typographic_apostrophe", "TONIGHT\u2019S BEDTIME", "Tonight\u2019s Bedtime"},
        {"apostrophe_before_a_word", "rock 'n' roll", "Rock 'N' Roll"},
        {"digit_begins", "49ers", "49Ers"},
        {"hyphen_dot_blanks", "rem-sleep a.m.  deep\tsleep", "Rem-Sleep A.M.  Deep\tSleep"},
        {"accents_composed_and_not", "\u00E9T\u00C9 e\u0301COLE", "\u00C9t\u00E9 E\u0301cole"},
        {"final_sigma", "\u039F\u0394\u039F\u03A3 \u03A3\u0391", "\u039F\u03B4\u03BF\u03C2 \u03A3\u03B1"},
        {"title_case_digraph", "\u01C6ungla", "\u01C5ungla"},
        {"ill_formed", "ab\xFFzc", "Ab\uFFFDZc"},
        {"empty", "", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(capitalizedString(row.text), row.expected) << row.name;
    }
}

TEST(TextCase, ChangesCaseTheSameWayInEveryLocale) {
    EXPECT_EQ(lowercaseString("SLEEP RINGS \u00C4I"), "sleep rings \u00E4i");
    EXPECT_EQ(uppercaseString("monday stra\u00DFe"), "MONDAY STRASSE");
}

TEST(TextCase, SplitsAfterWholeCharacters) {
    const auto split = [](const char* text) {
        const SplitText parts = splitAfterFirstCharacter(text);
        return parts.first + "|" + parts.rest;
    };
    EXPECT_EQ(split("Monday"), "M|onday");
    EXPECT_EQ(split("\u00E9t\u00E9"), "\u00E9|t\u00E9");
    EXPECT_EQ(split("\U0001F634z"), "\U0001F634|z");
    EXPECT_EQ(split("\xE2\x82"), "\xE2\x82|");
    EXPECT_EQ(split(""), "|");
}

TEST(TextCase, ReplacesInOnePass) {
    EXPECT_EQ(stringByReplacing("a   b  ", "  ", " "), "a  b ");
    EXPECT_EQ(stringByReplacing("Sleep Rating", " ", ""), "SleepRating");
    EXPECT_EQ(stringByReplacing("aaa", "a", "aa"), "aaaaaa");
    EXPECT_EQ(stringByReplacing("abc", "", "x"), "abc");
}

}  // namespace
}  // namespace lunabrook
