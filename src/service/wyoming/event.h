// The events that the parts of a voice assistant exchange (the Wyoming protocol), as bytes and as a struct.
//
//   {"type":"transcript","data_length":31}\n{"text":"how did I sleep today"}
//   -> Event{"transcript", {{"text", "how did I sleep today"}}}
//
// One line of JSON, then `data_length` bytes of JSON, an object that is merged over the line's own `data`, then
// `payload_length` bytes of sound, which nobody here listens to.

#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace lunabrook::wyoming {

struct Event {
    std::string type;
    nlohmann::json data = nlohmann::json::object();  // always an object
};

// The data follow the line, as most parts write it. Text that is not UTF-8 is repaired.
std::string bytesOfEvent(const Event& event);

// Finds the events in bytes that come in pieces of any size.
class EventReader {
public:
    static constexpr std::size_t kMostLineBytes = 64 << 10;  // of a line and of the data behind it
    static constexpr std::size_t kMostPayloadBytes = 1 << 20;
    static constexpr int kMostLevels = 64;  // of lists and objects in one another

    // Why what came is no event; one sentence. Where the next one would begin is unknown then.
    struct NoEvent {
        std::string why;
    };
    struct Incomplete {};
    using Found = std::variant<Incomplete, Event, NoEvent>;

    void feed(std::string_view bytes) { buffer_ += bytes; }

    // The next event, once all of it was fed.
    Found next();

    // Whether a part of an event came and the rest did not.
    bool isWithinEvent() const { return header_ || !buffer_.empty(); }

private:
    struct Header {
        Event event;
        std::size_t dataLeft = 0;
        std::size_t payloadLeft = 0;
    };

    static Header headerFromLine(std::string_view line);
    bool readHeader();
    bool readData();
    bool skipPayload();

    std::string buffer_;
    std::optional<Header> header_;  // of the event whose rest is awaited
};

}  // namespace lunabrook::wyoming
