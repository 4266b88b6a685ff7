#include "platform/values/value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace lunabrook {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
constexpr float kInfinite = std::numeric_limits<float>::infinity();

struct Row {
    const char* name;
    Value value;
    float asFloat;
    std::int64_t asInteger;
    bool asBool;
};

const Row kRows[] = {
    {"true", true, 1, 1, true},
    {"wide_integer", kMost, 9223372036854775807.0F, kMost, true},
    {"real", 22.7, 22.7F, 22, true},
    {"negative_real_cuts_toward_zero", -0.9, -0.9F, 0, true},
    {"real_beyond_single", 1e308, kInfinite, kMost, true},
    {"real_below_single", -1e308, -kInfinite, kLeast, true},
    {"just_beyond_integers", 9223372036854775808.0, 9223372036854775808.0F, kMost, true},
    {"text_after_blanks", " \t12.5 kg", 12.5F, 12, true},
    {"text_with_half_an_exponent", "2e", 2, 2, true},
    {"text_with_an_exponent", "2e3 m", 2000, 2, true},
    {"text_with_a_signed_exponent", "-1.5E+2", -150, -1, true},
    {"text_plus_zeros", "+007", 7, 7, true},
    {"text_only_fraction", ".5", 0.5F, 0, false},
    {"text_hexadecimal_is_its_zero", "0x10", 0, 0, false},
    {"text_nan_is_no_number", "nan", 0, 0, false},
    {"text_overflow", "1e999", kInfinite, 1, true},
    {"text_underflow", "1e-999", 0, 1, true},
    {"text_beyond_integers", "99999999999999999999", 1e20F, kMost, true},
    {"text_below_integers", "-99999999999999999999", -1e20F, kLeast, true},
    {"text_yes", " yes", 0, 0, true},
    {"text_sign_before_word", "+yes", 0, 0, false},
    {"text_zero", "000", 0, 0, false},
    {"text_empty", "", 0, 0, false},
    {"text_lone_dot", ".", 0, 0, false},
    {"date", Date{TimeInterval{5}}, 0, 0, false},
    {"dictionary", Dictionary{{"a", 1}}, 0, 0, false},
};

TEST(Value, ConvertsEveryKindToEveryNumber) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.value.floatValue(), row.asFloat);
        EXPECT_EQ(row.value.integerValue(), row.asInteger);
        EXPECT_EQ(row.value.boolValue(), row.asBool);
    }
    EXPECT_TRUE(std::isnan(Value(kNaN).floatValue()));
    EXPECT_EQ(Value(kNaN).integerValue(), 0);
}

TEST(Value, NarrowsLikeTheHardwareUpToTheLastDoubleThatRoundsIntoRange) {
    constexpr double kLargest = std::numeric_limits<float>::max();
    EXPECT_EQ(narrowed(kLargest), std::numeric_limits<float>::max());
    EXPECT_EQ(narrowed(std::nextafter(0x1.ffffffp127, 0.0)), std::numeric_limits<float>::max());
    EXPECT_EQ(narrowed(0x1.ffffffp127), kInfinite);
}

TEST(Value, KeyReadersTellMissingFromWrongKind) {
    const Dictionary record{{"number", "5"}, {"text", 5}, {"inner", Dictionary{{"a", 1}}}};
    EXPECT_EQ(floatForKey(record, "missing", -1), -1);
    EXPECT_EQ(floatForKey(record, "number", -1), 5);  // present, so converted
    EXPECT_EQ(floatForKey(record, "inner", -1), 0);
    EXPECT_EQ(stringForKey(record, "text"), nullptr);
    EXPECT_EQ(dictionaryForKey(record, "text"), nullptr);
    EXPECT_FALSE(dateForKey(record, "text"));
}

}  // namespace
}  // namespace lunabrook
