#include "platform/text/text_case.h"

#include <gtest/gtest.h>

namespace lunabrook {
namespace {

TEST(TextCase, CapitalizesWords) {
    const struct {
        const char* name;
        const char* text;
        const char* expected;
    } rows[] = {
        {"typographic_apostrophe", "TONIGHT\u2019S BEDTIME", "Tonight\u2019s Bedtime"},
        {"apostrophe_before_a_word", "rock 'n' roll", "Rock 'N' Roll"},
        {"digit_begins", "49ers", "49Ers"},
        {"hyphen_dot_blanks", "rem-sleep a.m.  deep\tsleep", "Rem-Sleep A.M.  Deep\tSleep"},
        {"combining_accent", "e\u0301COLE", "E\u0301cole"},
        {"final_sigma", "\u039F\u0394\u039F\u03A3 \u03A3\u0391", "\u039F\u03B4\u03BF\u03C2 \u03A3\u03B1"},
        {"title_case_digraph", "\u01C6ungla", "\u01C5ungla"},
        {"ill_formed", "ab\xFFzc", "Ab\uFFFDZc"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(capitalizedString(row.text), row.expected) << row.name;
    }
}

TEST(TextCase, SplitsAfterWholeCharacters) {
    for (const auto& [first, rest] :
         {std::pair("\u00E9", "t\u00E9"), {"\U0001F634", "z"}, {"\xE2\x82", ""}, {"", ""}}) {
        const SplitText parts = splitAfterFirstCharacter(std::string(first) + rest);
        EXPECT_EQ(parts.first, first);
        EXPECT_EQ(parts.rest, rest);
    }
}

TEST(TextCase, ReplacesInOnePass) {
    EXPECT_EQ(stringByReplacing("a   b  ", "  ", " "), "a  b ");
    EXPECT_EQ(stringByReplacing("aaa", "a", "aa"), "aaaaaa");
    EXPECT_EQ(stringByReplacing("abc", "", "x"), "abc");
}

}  // namespace
}  // namespace lunabrook
