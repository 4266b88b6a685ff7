#include "platform/files/property_list.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

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
std::string nested(int arrays) {
    return xml("<dict><key>a</key>" + repeated("<array>", arrays) + repeated("</array>", arrays) + "</dict>");
}

std::string whatIsWrongWith(const std::string& bytes) {
    const auto result = PropertyList::fromBytes(bytes);
    const auto* damage = std::get_if<std::string>(&result);
    return damage != nullptr ? *damage : "";
}

PropertyList listOf(const std::string& bytes) { return std::get<PropertyList>(PropertyList::fromBytes(bytes)); }

std::string binaryOf(const PropertyList& list) { return std::get<std::string>(list.binary()); }

// A binary list with one-byte offsets and references from its objects, the first of which is the root.
std::string binaryList(const std::vector<std::string>& objects) {
    std::string bytes = "bplist00";
    std::string table;
    for (const std::string& object : objects) {
        table += static_cast<char>(bytes.size());
        bytes += object;
    }
    const auto tableStart = static_cast<char>(bytes.size());
    bytes += table + "\0\0\0\0\0\0\x01\x01"s + "\0\0\0\0\0\0\0"s + static_cast<char>(objects.size());
    return bytes + "\0\0\0\0\0\0\0\0"s + "\0\0\0\0\0\0\0"s + tableStart;
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
        {"date_far", dateFromSecondsSince1970(1e13)},
        {"array", Array{Value(1), Value(Dictionary{{"inner", "x"}})}},
    };
    PropertyList list;
    for (const auto& [key, value] : values) {
        list.set(key, value);
    }
    EXPECT_EQ(listOf(binaryOf(list)).dictionary(), values);
}

TEST(PropertyList, ReadsXmlWithItsFullIntegerRangeAndManyValues) {
    const std::string many = repeated("<dict><key>k</key><integer>1</integer></dict>", 20000);
    const std::string entries =
        "<key>wide</key><integer>18446744073709551615</integer><key>minus</key><integer>-1</integer>"
        "<key>nan</key><real>nan</real><key>day</key><date>2300-01-01T00:00:00Z</date>";
    const Dictionary read =
        listOf(xml("<dict>" + entries + "<key>many</key><array>" + many + "</array></dict>")).dictionary();
    EXPECT_EQ(read.at("wide"), Value(18446744073709551615.0));
    EXPECT_EQ(read.at("minus"), Value(-1));
    EXPECT_TRUE(std::isnan(read.at("nan").floatValue()));
    EXPECT_EQ(read.at("many").array()->size(), 20000U);
    EXPECT_EQ(*read.at("day").date(), dateFromSecondsSince1970(10413792000));
}

TEST(PropertyList, WritesUnknownValuesBackToTheBit) {
    // A reference of an archiver and a date whose fraction is finer than a microsecond mean nothing here.
    const std::string uid = "\x80\x03"s;
    const std::string date = "\x33\x41\xC7\x89\x12\x34\x56\x78\x9A"s;
    const std::string before = binaryList({"\xD2\x01\x02\x03\x04"s, "\x51u"s, "\x51t"s, uid, date});
    PropertyList list = listOf(before);
    EXPECT_EQ(list.dictionary().count("u"), 0U);
    list.set("new", 1);
    const std::string after = binaryOf(list);
    EXPECT_NE(after.find(uid), std::string::npos);
    EXPECT_NE(after.find(date), std::string::npos);
}

TEST(PropertyList, RefusesToWriteWhatItWouldChange) {
    const std::string zeroInText = binaryList({"\xD1\x01\x02"s, "\x51k"s, "\x53x\0y"s});
    const std::string loneSurrogate = binaryList({"\xD1\x01\x02"s, "\x51k"s, "\x61\xD8\x00"s});
    for (const std::string& bytes : {zeroInText, loneSurrogate}) {
        EXPECT_EQ(listOf(bytes).dictionary().count("k"), 1U);
        EXPECT_TRUE(std::holds_alternative<PropertyList::Unwritable>(listOf(bytes).binary()));
    }
}

TEST(PropertyList, NamesWhatIsWrong) {
    const std::string whole = binaryOf(listOf(xml("<dict><key>a</key><string>b</string></dict>")));
    std::string wildOffset = whole;
    wildOffset[wildOffset.size() - 33] = '\xFF';
    std::vector<std::string> doubled;
    for (char next = 1; next <= 60; ++next) {
        doubled.push_back("\xA2"s + next + next);
    }
    doubled.push_back("\x09"s);
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
        {"xml_too_deep", nested(128), "is nested deeper than 128 levels"},
        {"xml_deep_behind_comments", xml(repeated("<array><!-- </array> -->", 200000)),
         "is nested deeper than 128 levels"},
        {"binary_cut", whole.substr(0, whole.size() - 5), "is cut short or damaged"},
        {"binary_head_only", "bplist00", "is cut short or damaged"},
        {"binary_wild_offset", wildOffset, "is cut short or damaged"},
        {"binary_cycle", binaryList({"\xD1\x01\x00"s, "\x51k"s}), "holds a container within itself"},
        {"binary_reference_beyond", binaryList({"\xD1\x01\x07"s, "\x51k"s}), "is cut short or damaged"},
        {"binary_count_beyond", binaryList({"\xDF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s}), "is cut short or damaged"},
        {"binary_doubling", binaryList(doubled), "holds more than four million values"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(whatIsWrongWith(row.bytes), row.what) << row.name;
    }
}

// Every single damaged byte of a small list is read or refused, never a crash: the sanitizers watch.
TEST(PropertyList, SurvivesEveryDamagedByte) {
    PropertyList list;
    list.set("bankDict",
             Dictionary{{"nightHour", 21}, {"startDate", dateFromSecondsSince1970(1e9)}, {"a", Array{Value("x")}}});
    const std::string whole = binaryOf(list);
    int refused = 0;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const int flip : {0x01, 0x80, 0xFF}) {
            std::string bytes = whole;
            bytes[i] = static_cast<char>(bytes[i] ^ flip);
            const auto result = PropertyList::fromBytes(bytes);
            if (const auto* damaged = std::get_if<PropertyList>(&result)) {
                EXPECT_LE(damaged->dictionary().size(), 4U);
            } else {
                ++refused;
            }
        }
    }
    EXPECT_GT(refused, 100);
}

}  // namespace
}  // namespace lunabrook
