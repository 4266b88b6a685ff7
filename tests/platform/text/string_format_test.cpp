#include "platform/text/string_format.h"

#include <gtest/gtest.h>

#include <limits>

namespace lunabrook {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(StringFormat, PrintsAsCDoesWithAnyArguments) {
    const struct {
        const char* format;
        std::initializer_list<FormatArgument> arguments;
        std::string expected;
    } rows[] = {
        {"%d|%i|%u|%ld|%lld|%f", {1, -2, 3, std::int64_t{4}, std::int64_t{-5}, 1.5}, "1|-2|3|4|-5|1.500000"},
        {"[%5.1f][%-5d][%05d][%+d][% d][%.3d][%-05d]",
         {2.5, 42, -42, 3, 4, 5, 6},
         "[  2.5][42   ][-0042][+3][ 4][005][6    ]"},
        {"[%+-5d][% -5d][%0+5d]", {3, 4, 5}, "[+3   ][ 4   ][+0005]"},
        {"%.0f %.0f %.1f %.2f %.02f", {0.5, 1.5, 0.25, 1.005, 2.675}, "0 2 0.2 1.00 2.67"},  // the exact value rounds
        {"%.1f %.1f", {-0.04, -0.0}, "-0.0 -0.0"},
        {"%.20f", {0.1}, "0.10000000000000000555"},
        {"%u %lu", {-1, -1}, "4294967295 18446744073709551615"},
        {"%f %f %+f %05.1f", {kInfinity, -kInfinity, kInfinity, -kNan}, "inf -inf +inf   nan"},
        {"[%4@][%-4@][%.1@]", {"\u00E9", "\u00E9", "\u00E9t"}, "[   \u00E9][\u00E9   ][\u00E9]"},
        {"%2$@ %1$@ %@ %@ %@", {"a", "b"}, "b a a b (null)"},
        {"%0$@ %3$@ %99999999999999999999$@ %-1$@", {"a"}, "(null) (null) (null) %-1$@"},
        {"%@ %d %.1f %@", {1, "x", "y", std::optional<std::string>()}, "(null) 0 0.0 (null)"},
        {"%d %d %d", {2.9, -2.9, kNan}, "2 -2 0"},
        {"%d %d", {1e300, -kInfinity}, "9223372036854775807 -9223372036854775808"},
        {"%.1f %5.1f", {7}, "7.0   0.0"},
        {"%.1f%% 100%", {12.5}, "12.5% 100%"},
        {"%s %x %q %hd %*d %llf %l%d", {5}, "%s %x %q %hd %*d %llf %l5"},
        {"%513d %.513f %999999999999d", {5}, "%513d %.513f %999999999999d"},
        {"%.512f", {1.0}, "1." + std::string(512, '0')},
        {"%512d", {1}, std::string(511, ' ') + "1"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(stringWithFormat(row.format, row.arguments), row.expected) << row.format;
    }
}

TEST(StringFormat, WritesNumbersTheLocalesWay) {
    const struct {
        const char* locale;
        const char* format;
        std::initializer_list<FormatArgument> arguments;
        std::string expected;
    } rows[] = {
        {"de_DE", "%@ %.1f%% %d", {"1.5", 1234.5, 12345}, "1.5 1.234,5% 12.345"},
        {"es_ES", "%d %d %.1f", {1234, 12345, 1234.5}, "1234 12.345 1234,5"},
        {"fi_FI", "%.1f", {-1.5}, "\u22121,5"},
        {"ar_EG", "%.1f %d", {-1.5, 20}, "\u061C-\u0661\u066B\u0665 \u0662\u0660"},
        {"ar_EG@numbers=latn", "%.1f", {1.5}, "1.5"},
        {"en_US", "%.2f %.2f %.1f %.0f", {1.005, 1.015, 0.25, 2.5}, "1.00 1.02 0.2 2"},  // shortest decimal, half-even
        {"en_US", "%.1f %+d %.2d", {-0.04, 5, 7}, "-0.0 +5 07"},
        {"de_DE", "[%8.1f][%-6.1f][%08.1f]", {-1.5, 1.5, -1.5}, "[    -1,5][1,5   ][-00001,5]"},
        {"en_US", "[% d][% u][%+u][% d]", {4, 4, 4, -4}, "[ 4][4][4][-4]"},
        {"ar_EG", "%03d", {5}, "\u0660\u0660\u0665"},
        {"en_US", "%d %.1f %@", {}, "0 0.0 (null)"},
        {"de_DE", "%.1f %d", {kInfinity, 1e300}, "\u221E 9.223.372.036.854.775.807"},
        {"en_US", "%.1f %.1f %.1f", {kNan, -kNan, -kInfinity}, "NaN NaN -\u221E"},  // a regression: once -NaN
    };
    std::string wide;
    for (int i = 0; i < 400'000; ++i) {
        wide += "%512@";
    }
    EXPECT_LT(stringWithFormat(wide, {"x"}).size(), 2U << 20);  // once 200 MB, and as much again for each fragment
    for (const auto& row : rows) {
        EXPECT_EQ(localizedStringWithFormat(Locale::named(row.locale).value(), row.format, row.arguments), row.expected)
            << row.locale << " " << row.format;
    }
}

}  // namespace
}  // namespace lunabrook
