// Bytes -> events, in pieces of any size: the pieces make no difference, and an event that is written is the one read.

#include "service/wyoming/event.h"
#include "fuzz.h"

namespace lunabrook::wyoming {
namespace {

using fuzz::require;

std::vector<EventReader::Found> foundIn(std::string_view bytes, std::size_t pieces) {
    EventReader reader;
    std::vector<EventReader::Found> all;
    while (!bytes.empty()) {
        reader.feed(bytes.substr(0, pieces));
        bytes.remove_prefix(std::min(pieces, bytes.size()));
        for (auto next = reader.next(); !std::holds_alternative<EventReader::Incomplete>(next); next = reader.next()) {
            all.push_back(next);
            if (std::holds_alternative<EventReader::NoEvent>(next)) {
                return all;
            }
        }
    }
    return all;
}

bool areSame(const EventReader::Found& left, const EventReader::Found& right) {
    const auto* one = std::get_if<Event>(&left);
    const auto* other = std::get_if<Event>(&right);
    return left.index() == right.index() && (one == nullptr || (one->type == other->type && one->data == other->data));
}

void test(std::string_view bytes) {
    const auto whole = foundIn(bytes, bytes.size());
    const auto pieces = foundIn(bytes, 1 + bytes.size() % 7);
    require(std::equal(whole.begin(), whole.end(), pieces.begin(), pieces.end(), areSame), "pieces make no difference");
    for (const auto& found : whole) {
        if (const auto* event = std::get_if<Event>(&found)) {
            require(event->data.is_object(), "data are an object");
            const std::string written = bytesOfEvent(*event);
            if (written.size() <= EventReader::kMostLineBytes) {  // data of one reach the limit of both
                const auto again = foundIn(written, written.size());
                require(again.size() == 1 && areSame(again.front(), found), "an event that is written is the one read");
            }
        }
    }
}

}  // namespace
}  // namespace lunabrook::wyoming

LUNABROOK_FUZZ_TARGET(lunabrook::wyoming::test)
