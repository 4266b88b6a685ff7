#include "service/wyoming/event.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace lunabrook::wyoming {

namespace {

using nlohmann::json;

struct Broken : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Deep nesting is refused while it is read: what is nested without end cannot be copied or written with a stack that
// ends.
json objectFromText(std::string_view text, const std::string& what) {
    bool isTooDeep = false;
    const auto watchDepth = [&isTooDeep](int depth, json::parse_event_t, const json&) {
        isTooDeep = isTooDeep || depth > EventReader::kMostLevels;
        return !isTooDeep;
    };
    constexpr bool kThrows = false;
    json read = json::parse(text, watchDepth, kThrows);
    if (isTooDeep) {
        throw Broken(what + " is nested too deep");
    }
    if (!read.is_object()) {
        throw Broken(what + " is no JSON object");
    }
    return read;
}

// Missing and null mean zero.
std::size_t lengthOf(const json& header, const char* name, std::size_t most) {
    const auto length = header.find(name);
    if (length == header.end() || length->is_null()) {
        return 0;
    }
    if (!length->is_number_unsigned() || length->get<std::uint64_t>() > most) {
        throw Broken(std::string(name) + " is no number from 0 to " + std::to_string(most));
    }
    return length->get<std::size_t>();
}

std::string textOf(const json& value) { return value.dump(-1, ' ', false, json::error_handler_t::replace); }

}  // namespace

std::string bytesOfEvent(const Event& event) {
    const std::string data = event.data.empty() ? std::string() : textOf(event.data);
    json header{{"type", event.type}, {"version", LUNABROOK_VERSION}};
    if (!data.empty()) {
        header["data_length"] = data.size();
    }
    return textOf(header) + "\n" + data;
}

EventReader::Header EventReader::headerFromLine(std::string_view line) {
    json header = objectFromText(line, "the line");
    const auto type = header.find("type");
    if (type == header.end() || !type->is_string()) {
        throw Broken("the line has no type");
    }
    Header read{.event = {.type = type->get<std::string>()},
                .dataLeft = lengthOf(header, "data_length", kMostLineBytes),
                .payloadLeft = lengthOf(header, "payload_length", kMostPayloadBytes)};
    if (const auto data = header.find("data"); data != header.end() && !data->is_null()) {
        if (!data->is_object()) {
            throw Broken("data is no JSON object");
        }
        read.event.data = std::move(*data);
    }
    return read;
}

bool EventReader::readHeader() {
    if (header_) {
        return true;
    }
    const std::size_t end = buffer_.find('\n');
    if (std::min(end, buffer_.size()) > kMostLineBytes) {
        throw Broken("the line is longer than " + std::to_string(kMostLineBytes) + " bytes");
    }
    if (end == std::string::npos) {
        return false;
    }
    header_ = headerFromLine(std::string_view(buffer_).substr(0, end));
    buffer_.erase(0, end + 1);
    return true;
}

bool EventReader::readData() {
    if (header_->dataLeft == 0) {
        return true;
    }
    if (buffer_.size() < header_->dataLeft) {
        return false;
    }
    header_->event.data.update(objectFromText(std::string_view(buffer_).substr(0, header_->dataLeft), "the data"));
    buffer_.erase(0, std::exchange(header_->dataLeft, 0));
    return true;
}

bool EventReader::skipPayload() {
    const std::size_t length = std::min(header_->payloadLeft, buffer_.size());
    buffer_.erase(0, length);
    header_->payloadLeft -= length;
    return header_->payloadLeft == 0;
}

EventReader::Found EventReader::next() {
    try {
        if (!readHeader() || !readData() || !skipPayload()) {
            return Incomplete{};
        }
    } catch (const Broken& broken) {
        return NoEvent{broken.what()};
    }
    return std::exchange(header_, std::nullopt)->event;
}

}  // namespace lunabrook::wyoming
