// What the service answers to an event:
//
//   describe -> info                what it is and which languages it speaks
//   transcript -> handled           the spoken answer to a sentence, in the sentence's language
//              -> not-handled       what is spoken when nobody knows what was meant, or when the answer failed
//   ping -> pong
//
// Each sentence is answered by a device of its own, so it sees the store, the clock, the zone and the texts as they are
// then.

#pragma once

#include <optional>
#include <string>

#include "host/device_options.h"
#include "service/wyoming/event.h"

namespace lunabrook::wyoming {

inline constexpr const char* kProgram = "lunabrook-wyoming";

class Conversation {
public:
    explicit Conversation(DeviceOptions options) : options_(std::move(options)) {}

    // Nil for an event that asks nothing of a service of this kind. What is wrong with the store or the texts is told
    // on standard error, by every sentence that meets it.
    std::optional<Event> answer(const Event& event) const;

private:
    Event info() const;
    Event answerToTranscript(const Event& transcript) const;

    DeviceOptions options_;
};

// After it the connection ends. `code` is for programs, `why` for people.
Event errorEvent(const std::string& code, const std::string& why);
bool isError(const Event& event);

}  // namespace lunabrook::wyoming
