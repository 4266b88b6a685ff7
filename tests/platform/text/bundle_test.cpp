#include "platform/text/bundle.h"

#include <gtest/gtest.h>

#include "platform/text/string_table.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

using test::TemporaryFolder;
using test::writeFile;

std::string languageThatAnswers(const std::vector<std::string>& languages, const std::vector<std::string>& preferred) {
    const TemporaryFolder folder;
    for (const std::string& language : languages) {
        writeFile(folder.path() / (language + ".lproj") / "Localizable.strings", "\"which\" = \"" + language + "\";");
    }
    writeFile(folder.path() / "ko.lproj", "a file");
    writeFile(folder.path() / "ja/Localizable.strings", "\"which\" = \"a folder of another kind\";");
    return Bundle(folder.path(), preferred, [](const Fault&) {}).localizedString("which");
}

TEST(Bundle, TakesTheFirstPreferredLanguageThatItHas) {
    struct Row {
        const char* name;
        std::vector<std::string> languages, preferred;
        const char* expected;  // "which" when the bundle has none of them
    };
    const Row rows[] = {
        {"exact_region", {"en", "en-GB"}, {"en-GB"}, "en-GB"},
        {"underscore_in_the_folder", {"pt_BR", "pt"}, {"pt-BR"}, "pt_BR"},
        {"region_is_left_out", {"de", "en"}, {"de-AT"}, "de"},
        {"nearest_region", {"en", "en-GB"}, {"en-AU"}, "en-GB"},
        {"script_from_the_region", {"zh-Hans", "zh-Hant"}, {"zh-TW"}, "zh-Hant"},
        {"the_other_region_alone", {"de-CH"}, {"de-AT"}, "de-CH"},
        {"relative_one_way", {"de", "en"}, {"gsw-CH"}, "de"},
        {"not_the_other_way", {"en", "gsw"}, {"de"}, "which"},
        {"relatives_either_way", {"en", "hr"}, {"bs"}, "hr"},
        {"relatives_and_back", {"bs", "en"}, {"hr"}, "bs"},
        {"another_script_is_no_match", {"uz"}, {"uz-AF"}, "which"},
        {"second_wish", {"en", "fr"}, {"de-DE", "fr-CA", "en"}, "fr"},
        {"near_first_wish_before_exact_second", {"en", "fr"}, {"fr-CA", "en"}, "fr"},
        {"none", {"en", "fr"}, {"de-DE", "ja"}, "which"},
        {"no_wish", {"en"}, {}, "which"},
        {"no_folder_of_a_language", {"en"}, {"ko-KR", "ja-JP", "en"}, "en"},
        {"old_code", {"he", "en"}, {"iw-IL"}, "he"},
        {"not_a_tag_though_it_leads_there", {"en"}, {"ja/../en"}, "which"},
        {"not_a_tag", {"en"}, {"", "../en", "en"}, "en"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(languageThatAnswers(row.languages, row.preferred), row.expected) << row.name;
    }
}

TEST(Bundle, GivesTheKeyWhereTheTableHasNoneAndTellsADamagedTableOnce) {
    const TemporaryFolder folder;
    std::vector<Fault> faults;
    const auto german = folder.path() / "de.lproj";
    writeFile(german / "Localizable.strings", "\"Night\" = \"Nacht\"; \"Empty\" = \"\";");
    writeFile(german / "Damaged.strings", "\"Night\" = \"Nacht\";\n\"Day\" \"Tag\";\n");
    std::filesystem::create_directory(german / "Unreadable.strings");
    writeFile(folder.path() / "en.lproj/Localizable.strings", "\"Day\" = \"Day!\";");
    const Bundle bundle(folder.path(), {"de", "en"}, [&](const Fault& fault) { faults.push_back(fault); });
    EXPECT_EQ(bundle.localizedString("Night"), "Nacht");
    EXPECT_EQ(bundle.localizedString("Empty"), "");
    EXPECT_EQ(bundle.localizedString("Day"), "Day");  // the chosen language alone is asked
    EXPECT_EQ(bundle.localizedString("Night", "Missing"), "Night");
    EXPECT_EQ(bundle.table("Missing"), nullptr);
    EXPECT_EQ(bundle.localizedString("Night", "Damaged"), "Night");
    EXPECT_EQ(bundle.localizedString("Day", "Damaged"), "Day");
    EXPECT_EQ(bundle.localizedString("Day", "Unreadable"), "Day");
    const std::vector<Fault> expected = {
        {german / "Damaged.strings", 2, "expected '='; its texts are not used"},
        {german / "Unreadable.strings", 0, "cannot be read; its texts are not used"},
    };
    EXPECT_EQ(faults, expected);
}

// The text of the key "k"; else the line and what is wrong.
std::string read(std::string_view bytes) {
    const auto table = stringTableFromBytes(bytes);
    if (const auto* error = std::get_if<SyntaxError>(&table)) {
        return std::to_string(error->line) + ": " + error->what;
    }
    const auto& texts = std::get<StringTable>(table);
    const auto found = texts.find("k");
    return found != texts.end() ? found->second : "no k";
}

TEST(StringTable, ReadsTextOrRefusesTheWholeTable) {
    using namespace std::string_view_literals;
    struct Row {
        const char* name;
        std::string_view bytes;
        std::string_view expected;
    };
    const Row rows[] = {
        {"tight", "\"a\"=\"b\";\"k\"=\"v\";", "v"},
        {"comments", "/* \"k\" = \"x\"; **/ // \"k\"\n\"k\" /*=*/ = // =\n \"a // b /* c\" ;", "a // b /* c"},
        {"comment_at_the_end", "\"k\" = \"v\"; // done", "v"},
        {"escapes", R"("k" = "a\n\t\r\"\\\q";)", "a\n\t\r\"\\q"},
        {"code_points", R"("k" = "\U00e9\U2460x";)", "\u00E9\u2460x"},
        {"surrogate_pair", R"("k" = "\UD83D\UDE34";)", "\U0001F634"},
        {"lone_halves", R"("k" = "\UD83Dx\UDE34\UD83D\U0041";)", "\uFFFDx\uFFFD\uFFFDA"},
        {"lines_in_a_text", "\"k\" = \"a\nb\";", "a\nb"},
        {"last_one_counts", "\"k\" = \"a\"; \"k\" = \"b\";", "b"},
        {"empty", "", "no k"},
        {"utf8_mark", "\xEF\xBB\xBF\"k\" = \"\u00E9\";", "\u00E9"},
        {"utf16_little", "\xFF\xFE\"\0k\0\"\0=\0\"\0\x60\x24\"\0;\0"sv, "\u2460"},
        {"utf16_big", "\xFE\xFF\0\"\0k\0\"\0=\0\"\x24\x60\0\"\0;"sv, "\u2460"},
        {"xml",
         "\n<?xml "
         "version=\"1.0\"?><plist><dict><key>k</key><string>v</string><key>n</key><integer>1</integer></dict></plist>",
         "v"},
        {"binary",
         "bplist00\xD1\1\2QkQv\x08\x0B\x0D\0\0\0\0\0\0\1\1\0\0\0\0\0\0\0\3\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x0F"sv, "v"},
        {"cut_before_the_end", "\"k\" = \"v\"\n", "2: expected ';'"},
        {"no_end_of_an_entry", "\"k\" = \"v\";\n\"x\" = \"y\"\n\"z\" = \"\";", "3: expected ';'"},
        {"bare_value", "\"k\" = v;", "1: expected '\"'"},
        {"bare_key", "\n\nk = \"v\";", "3: expected '\"'"},
        {"open_text", "\"k\" = \"v;\n\n", "1: a text has no closing '\"'"},
        {"cut_in_an_escape", "\"k\" = \"v\\", "1: a text has no closing '\"'"},
        {"open_comment", "\"k\" = \"v\";\n/* \n", "2: a comment has no end"},
        {"no_digit", R"("k" = "\U12g4";)", "1: expected four hexadecimal digits after '\\U'"},
        {"cut_in_the_digits", R"("k" = "\U12)", "1: expected four hexadecimal digits after '\\U'"},
        {"latin1", "\"k\" = \"v\";\n\"\xE9\" = \"\";", "2: is not UTF-8"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(read(row.bytes), row.expected) << row.name;
    }
    EXPECT_EQ(read("bplist00 rubbish").substr(0, 3), "0: ");
}

}  // namespace
}  // namespace lunabrook
