#include "platform/files/property_list.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace lunabrook {
namespace {

using namespace std::string_literals;

std::string xml(const std::string& root) {
    return "<?xml version=\"1.0\"?>\n<plist version=\"1.0\">" + root + "</plist>\n";
}

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

// A dictionary around so many arrays.
std::string nested(int arrays, const std::string& inmost = "") {
    return xml("<dict><key>a</key>" + repeated("<array>", arrays) + inmost + repeated("</array>", arrays) + "</dict>");
}

std::string whatIsWrongWith(const std::string& bytes) {
    const auto result = dictionaryFromPropertyList(bytes);
    const auto* damage = std::get_if<std::string>(&result);
    return damage != nullptr ? *damage : "";
}

Dictionary dictionaryOf(const std::string& bytes) { return std::get<Dictionary>(dictionaryFromPropertyList(bytes)); }

// The list with more keys, or why there is none.
std::string withKeys(const std::string& bytes, const Dictionary& keys) {
    PropertyList list;
    for (const auto& [key, value] : keys) {
        list.set(key, value);
    }
    const auto damage = bytes.empty() ? std::nullopt : list.merge(bytes);
    EXPECT_EQ(damage.value_or(""), "");
    auto result = list.binary();
    const auto* unwritable = std::get_if<PropertyList::Unwritable>(&result);
    return unwritable != nullptr ? unwritable->why : std::get<std::string>(result);
}

std::string fourBytes(std::size_t number) {
    return {static_cast<char>(number >> 24), static_cast<char>(number >> 16), static_cast<char>(number >> 8),
            static_cast<char>(number)};
}

// A binary list with one-byte references from its objects, the first of which is the root.
std::string binaryList(const std::vector<std::string>& objects) {
    std::string bytes = "bplist00";
    std::string table;
    for (const std::string& object : objects) {
        table += fourBytes(bytes.size());
        bytes += object;
    }
    const std::size_t tableStart = bytes.size();
    bytes += table + "\0\0\0\0\0\0\x04\x01\0\0\0\0"s + fourBytes(objects.size());
    return bytes + "\0\0\0\0\0\0\0\0\0\0\0\0"s + fourBytes(tableStart);
}

// As many arrays, each holding the next one twice, around one object.
std::string doubling(int arrays, const std::string& inmost) {
    std::vector<std::string> objects;
    for (int next = 1; next <= arrays; ++next) {
        objects.push_back("\xA2"s + static_cast<char>(next) + static_cast<char>(next));
    }
    objects.push_back(inmost);
    return binaryList(objects);
}

TEST(PropertyList, KeepsEveryKindThroughBinary) {
    const Dictionary values{
        {"true", true},
        {"negative", -5},
        {"least", std::numeric_limits<std::int64_t>::min()},
        {"real", 0.1},
        {"huge", 1e308},
        {"infinite", std::numeric_limits<double>::infinity()},
        {"text", "\U0001F4A4 In bed"},
        {"data", Data{0, 255}},
        {"date_before_2001", dateFromSecondsSince1970(978307199.5)},
        {"date_far", dateFromSecondsSince1970(253402300799.5)},
        {"array", Array{Value(1), Value(Dictionary{{"inner", "x"}})}},
    };
    EXPECT_EQ(dictionaryOf(withKeys("", values)), values);
}

TEST(PropertyList, ReadsXmlWithItsFullIntegerRangeAndManyValues) {
    const std::string many = repeated("<dict><key>k</key><integer>1</integer></dict>", 20000);
    const std::string entries =
        "<key>wide</key><integer>18446744073709551615</integer><key>minus</key><integer>-1</integer>"
        "<key>nan</key><real>nan</real><key>day</key><date>2300-01-01T00:00:00Z</date>";
    const Dictionary read = dictionaryOf(xml("<dict>" + entries + "<key>many</key><array>" + many + "</array></dict>"));
    EXPECT_EQ(read.at("wide"), Value(18446744073709551615.0));
    EXPECT_EQ(read.at("minus"), Value(-1));
    EXPECT_TRUE(std::isnan(read.at("nan").floatValue()));
    EXPECT_EQ(read.at("many").array()->size(), 20000U);
    EXPECT_EQ(*read.at("day").date(), dateFromSecondsSince1970(10413792000));
    // Another writer's opening, a marked section in a text, and characters by number.
    const std::string told =
        "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//X//DTD X//EN\" "
        "\"http://x.invalid/x.dtd\">\n<plist version=\"1.0\"><dict><key>a</key><string>&lt;<!-- "
        "-->&#x1F4A4;<![CDATA[&]]>"
        "</string><key>a</key><true/><key>b</key><data>\n\tAAEC\n</data></dict></plist>\n";
    EXPECT_EQ(dictionaryOf(told), (Dictionary{{"a", "<\U0001F4A4&"}, {"b", Data{0, 1, 2}}}));
}

// Values that mean nothing here, or less than what stands there, stay as they came when another key is written.
TEST(PropertyList, WritesEveryValueBackToTheBit) {
    const struct {
        const char* name;
        std::string code;
        std::optional<Value> read;
    } rows[] = {
        {"reference_of_an_archiver", "\x80\x03"s, {}},
        {"null", "\0"s, {}},
        {"date_finer_than_a_microsecond", "\x33\x41\xC7\x89\x12\x34\x56\x78\x9A"s,
         dateFromSecondsSince1970(978307200.0 + 0x1.789123456789Ap29)},
        {"real_of_single_precision", "\x22\x3F\xC0\0\0"s, 1.5},
        {"integer_of_two_bytes", "\x11\0\x05"s, 5},
        {"wide_integer", "\x14\0\0\0\0\0\0\0\x01\0\0\0\0\0\0\0\0"s, 18446744073709551616.0},
        {"wide_negative_integer", "\x14"s + std::string(16, '\xFF'), -1},
        {"zero_in_a_text", "\x53x\0y"s, "x\0y"s},
        {"unpaired_character", "\x62\xD8\0\0z"s, "z"},
        {"unpaired_character_at_the_end", "\x62\0z\xDC\0"s, "z"},
        {"no_ascii", "\x51\xFF"s, "\xFF"},
        {"set", "\xC1\x01"s, Array{Value("k")}},
    };
    for (const auto& row : rows) {
        const std::string before = binaryList({"\xD1\x01\x02"s, "\x51k"s, row.code});
        const Dictionary contents = dictionaryOf(before);
        EXPECT_EQ(contents.contains("k"), row.read.has_value()) << row.name;
        EXPECT_TRUE(!row.read || contents.at("k") == *row.read) << row.name;
        const std::string after = withKeys(before, {{"new", 1}});
        const bool isSet = row.code.front() == '\xC1';  // its reference is another number then
        EXPECT_NE(after.find(isSet ? "\xC1"s : row.code), std::string::npos) << row.name;
        EXPECT_EQ(dictionaryOf(after).size(), contents.size() + 1) << row.name;
    }
    const Dictionary zeroInKey{{"a\0b"s, 1}, {"a", Dictionary{{"\0"s, 2}}}};
    EXPECT_EQ(dictionaryOf(withKeys("", zeroInKey)), zeroInKey);
}

// Before and after writing, even when the first value has no meaning.
TEST(PropertyList, FirstOfADoubledKeyCounts) {
    const std::string doubled = binaryList({"\xD3\x01\x02\x01\x03\x04\x05"s, "\x51k"s, "\x51k"s,
                                            "\x51"
                                            "a"s,
                                            "\x51"
                                            "b"s,
                                            "\x51"
                                            "c"s});
    const std::string inner = binaryList({"\xD1\x01\x02"s,
                                          "\x51"
                                          "a"s,
                                          "\xD2\x01\x01\x01\x03"s,
                                          "\x51"
                                          "b"s});
    EXPECT_EQ(dictionaryOf(doubled), (Dictionary{{"k", "a"}}));
    EXPECT_TRUE(dictionaryOf(binaryList({"\xD2\x01\x01\x02\x01"s, "\x51k"s, "\0"s})).empty());
    EXPECT_EQ(dictionaryOf(withKeys(doubled, {{"k", 1}})), (Dictionary{{"k", 1}}));
    const std::string wideKey = binaryList({"\xD1\x01\x02"s, "\x61\0k"s,
                                            "\x51"
                                            "a"s});
    const std::string once = withKeys(wideKey, {{"k", 1}});
    EXPECT_EQ(once.find("\x61\0k"s), std::string::npos) << "another reader would take the key that is left";
    EXPECT_EQ(dictionaryOf(withKeys(inner, {})), (Dictionary{{"a", Dictionary{{"a", "a"}}}}));
    EXPECT_EQ(withKeys(inner, {}).find("\xD2"), std::string::npos);
}

TEST(PropertyList, RefusesToWriteWhatNobodyCouldRead) {
    Value deep = 1;
    for (int level = 0; level < 128; ++level) {
        deep = Array{std::move(deep)};
    }
    const struct {
        const char* name;
        Value value;
        const char* why;
    } rows[] = {
        {"text", "\xFF", "the value for k holds a text that is no UTF-8"},
        {"key", Dictionary{{"\xC3", 1}}, "the value for k holds a text that is no UTF-8"},
        {"date_before_year_1", dateFromSecondsSince1970(-62135596801.0),
         "the value for k holds a date outside the years 1 to 9999"},
        {"date_behind_year_9999", dateFromSecondsSince1970(253402300800.0),
         "the value for k holds a date outside the years 1 to 9999"},
        {"date_without_an_end", dateFromSecondsSince1970(NAN),
         "the value for k holds a date outside the years 1 to 9999"},
        {"depth", deep, "the value for k is nested deeper than 128 levels"},
        {"size", Data(std::size_t{64} << 20), "would be larger than 64 MiB"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(withKeys("", {{"k", row.value}}), row.why) << row.name;
    }
}

TEST(PropertyList, NamesWhatIsWrong) {
    const std::string whole = withKeys("", {{"a", "b"}});
    std::string wildOffset = whole;
    wildOffset[wildOffset.size() - 33] = '\xFF';
    const struct {
        const char* name;
        std::string bytes;
        const char* what;
    } rows[] = {
        {"empty", "", "is not a property list, or a damaged one"},
        {"not_utf8", "<plist>\xFF</plist>", "is neither a binary property list nor UTF-8 text"},
        {"xml_cut", xml("<dict><key>a</key><string>b</string></dict>").substr(0, 60), "is cut short or damaged"},
        {"xml_root_array", xml("<array/>"), "is a property list whose root is not a dictionary"},
        {"xml_deepest", nested(127), ""},
        {"xml_too_deep_and_empty", nested(127, "<array/>"), "is nested deeper than 128 levels"},
        {"xml_with_an_entity", "<!DOCTYPE plist [<!ENTITY a \"b\">]>" + xml("<dict/>").substr(22),
         "is not a property list, or a damaged one"},
        {"xml_with_an_unknown_entity",
         "<!DOCTYPE plist SYSTEM \"/dev/zero\">" + xml("<dict><key>&a;</key><true/></dict>").substr(22),
         "is not a property list, or a damaged one"},
        {"xml_too_large", xml(std::string(8 << 20, ' ')), "is XML of more than 8 MiB"},
        {"xml_value_without_key", xml("<dict><true/></dict>"), "is not a property list, or a damaged one"},
        {"xml_two_roots", xml("<dict/><dict/>"), "is not a property list, or a damaged one"},
        {"xml_too_deep", nested(128), "is nested deeper than 128 levels"},
        {"xml_deep_behind_comments", xml(repeated("<array><!-- </array> -->", 200000)),
         "is nested deeper than 128 levels"},
        {"binary_cut", whole.substr(0, whole.size() - 5), "is cut short or damaged"},
        {"binary_head_only", "bplist00", "is cut short or damaged"},
        {"binary_wild_offset", wildOffset, "is cut short or damaged"},
        {"binary_cycle", binaryList({"\xD1\x01\x00"s, "\x51k"s}), "holds a container within itself"},
        {"binary_reference_beyond", binaryList({"\xD1\x01\x07"s, "\x51k"s}), "is cut short or damaged"},
        {"binary_count_beyond", binaryList({"\xDF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s}), "is cut short or damaged"},
        {"binary_key_is_no_text", binaryList({"\xD1\x01\x01"s, "\x10\x01"s}),
         "is not a property list, or a damaged one"},
        {"binary_of_no_kind", binaryList({"\xD1\x01\x02"s, "\x51k"s, "\xF0"s}),
         "is not a property list, or a damaged one"},
        {"binary_large_text_many_times", doubling(9, "\x5F\x12\0\x10\0\0"s + std::string(1 << 20, 'x')),
         "holds more than 256 MiB with shared values written out"},
        {"binary_doubling", doubling(60, "\x09"s), "holds more than four million values"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(whatIsWrongWith(row.bytes), row.what) << row.name;
    }
}

// Every single damaged byte of a small list is read or refused, never a crash: the sanitizers watch.
TEST(PropertyList, SurvivesEveryDamagedByte) {
    const std::string whole = withKeys(
        "", {{"bankDict",
              Dictionary{{"nightHour", 21}, {"startDate", dateFromSecondsSince1970(1e9)}, {"a", Array{Value("x")}}}}});
    int refused = 0;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const int flip : {0x01, 0x80, 0xFF}) {
            std::string bytes = whole;
            bytes[i] = static_cast<char>(bytes[i] ^ flip);
            const bool isRefused = !whatIsWrongWith(bytes).empty();
            EXPECT_EQ(PropertyList().merge(bytes).has_value(), isRefused);
            refused += isRefused ? 1 : 0;
        }
    }
    EXPECT_GT(refused, 100);
}

}  // namespace
}  // namespace lunabrook
