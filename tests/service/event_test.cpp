#include "service/wyoming/event.h"

#include <gtest/gtest.h>

namespace lunabrook::wyoming {
namespace {

// What a reader finds when the bytes come one by one: "type{data} ...", then "!why" or "..." for half an event.
std::string foundIn(const std::string& bytes) {
    EventReader reader;
    std::string found;
    for (const char byte : bytes) {
        reader.feed({&byte, 1});
        for (auto next = reader.next(); !std::holds_alternative<EventReader::Incomplete>(next); next = reader.next()) {
            if (const auto* none = std::get_if<EventReader::NoEvent>(&next)) {
                return found + "!" + none->why;
            }
            const auto& event = std::get<Event>(next);
            found += event.type + event.data.dump() + " ";
        }
    }
    return found + (reader.isWithinEvent() ? "..." : "");
}

// A line of so many bytes in all, its end not counted.
std::string lineOf(std::size_t length) {
    const std::string start = R"({"type":")";
    return start + std::string(length - start.size() - 2, 'x') + "\"}\n";
}

std::string nested(int levels) {
    const auto count = static_cast<std::size_t>(levels);
    return R"({"type":"a","data":{"b":)" + std::string(count, '[') + std::string(count, ']') + "}}\n";
}

TEST(EventReader, FindsEventsAndTellsWhatIsNone) {
    struct Row {
        std::string bytes, found;
    };
    const Row rows[] = {
        {"{\"type\":\"ping\"}\n", "ping{} "},
        {"{\"type\":\"a\",\"data\":{\"b\":1}}\r\n{\"type\":\"c\"}\n", "a{\"b\":1} c{} "},
        {"{\"type\":\"a\",\"data_length\":7}\n{\"b\":2}{\"type\":\"c\"}\n", "a{\"b\":2} c{} "},
        {"{\"type\":\"a\",\"data\":{\"b\":1,\"d\":3},\"data_length\":7}\n{\"b\":2}", "a{\"b\":2,\"d\":3} "},
        {"{\"type\":\"a\",\"data_length\":2,\"payload_length\":4}\n{}\n{\n}{\"type\":\"c\"}\n", "a{} c{} "},
        {"{\"type\":\"a\",\"data\":null,\"data_length\":null,\"payload_length\":0,\"new\":[]}\n", "a{} "},
        {"{\"type\":\"a\",\"payload_length\":4}\n123", "..."},
        {"{\"type\":\"a\",\"data_length\":4}\n{  ", "..."},
        {"{\"type\":\"a\"}", "..."},
        {"GET / HTTP/1.1\r\n\r\n", "!the line is no JSON object"},
        {"\n", "!the line is no JSON object"},
        {"[\"type\"]\n", "!the line is no JSON object"},
        {"{\"type\":\"a\xFF\"}\n", "!the line is no JSON object"},
        {"{\"type\":\"a\",\"n\":1e999}\n", "!the line is no JSON object"},
        {"{\"data\":{}}\n", "!the line has no type"},
        {"{\"type\":7}\n", "!the line has no type"},
        {"{\"type\":\"a\",\"data\":[]}\n", "!data is no JSON object"},
        {"{\"type\":\"a\",\"data_length\":2}\n[]", "!the data is no JSON object"},
        {"{\"type\":\"a\",\"data_length\":-1}\n", "!data_length is no number from 0 to 65536"},
        {"{\"type\":\"a\",\"data_length\":2.0}\n{}", "!data_length is no number from 0 to 65536"},
        {"{\"type\":\"a\",\"data_length\":65536}\n", "..."},
        {"{\"type\":\"a\",\"data_length\":65537}\n", "!data_length is no number from 0 to 65536"},
        {"{\"type\":\"a\",\"payload_length\":1048576}\n" + std::string(1048576, '\n') + "{\"type\":\"c\"}\n",
         "a{} c{} "},
        {"{\"type\":\"a\",\"payload_length\":1048577}\n", "!payload_length is no number from 0 to 1048576"},
        {"{\"type\":\"a\",\"payload_length\":\"4\"}\n", "!payload_length is no number from 0 to 1048576"},
        {lineOf(65536), std::string(65525, 'x') + "{} "},
        {std::string(65536, 'x'), "..."},
        {std::string(65537, 'x'), "!the line is longer than 65536 bytes"},
        {nested(30), "a{\"b\":" + std::string(30, '[') + std::string(30, ']') + "} "},
        {nested(30'000), "!the line is nested too deep"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(foundIn(row.bytes), row.found) << row.bytes.substr(0, 80);
    }
}

TEST(EventReader, FindsALineThatIsTooLongWithItsEnd) {
    EventReader reader;
    reader.feed(lineOf(65537));
    EXPECT_TRUE(std::holds_alternative<EventReader::NoEvent>(reader.next()));
}

TEST(Event, IsWrittenWithItsDataBehindTheLine) {
    EXPECT_EQ(bytesOfEvent({.type = "pong"}), "{\"type\":\"pong\",\"version\":\"" LUNABROOK_VERSION "\"}\n");
    EXPECT_EQ(bytesOfEvent({.type = "handled", .data = {{"text", "21\u00A0Uhr \xFF"}}}),
              "{\"data_length\":22,\"type\":\"handled\",\"version\":\"" LUNABROOK_VERSION
              "\"}\n{\"text\":\"21\u00A0Uhr \uFFFD\"}");
}

}  // namespace
}  // namespace lunabrook::wyoming
