// Makes a binary property list of what it is sent; the entries of every dictionary at the outside go into the one root.
//
// Equal objects are written once, containers as well, so what was shared in an old list is shared again.

#pragma once

#include <limits>
#include <string>
#include <vector>

#include "platform/files/private/list_sink.h"

namespace lunabrook {

class BinaryWriter : public ListSink {
public:
    // Another list begins: the limits hold for each by itself.
    void startList() { startCountingAgain(); }
    // In the place of a value: its key shall not be there.
    void leaveOut() { numbers_.push_back(kNothing); }

    // Too many values are damage; how many bytes there may be is the caller's.
    std::string bytes();

private:
    using Number = std::uint32_t;  // of an object; a container's is greater than those of what is in it
    static constexpr Number kNothing = std::numeric_limits<Number>::max();

    struct Open {
        ObjectKind kind;
        std::size_t start;  // in the numbers
    };

    void take(std::string_view code) override { numbers_.push_back(numberOf(code)); }
    void begin(ObjectKind kind) override { open_.push_back({kind, numbers_.size()}); }
    void end() override;

    Number numberOf(std::string_view code);
    Number numberOfContainer(ObjectKind kind, std::size_t start);
    Number* slotFor(std::string_view code);
    std::string_view codeOfObject(Number number) const;
    std::vector<Number> writtenNumbers(Number root) const;
    void appendContainer(std::string& bytes, std::string_view code, const std::vector<Number>& written,
                         std::size_t referenceSize) const;

    std::string codes_;            // of a container: a marker, and the numbers of keys and values in turn
    std::vector<Number> starts_;   // of each object in the codes
    std::vector<Number> slots_;    // a hash table of the objects
    std::vector<Number> numbers_;  // of the root's entries, then of those of the containers that are open
    std::vector<Open> open_;
    std::vector<Number> seenIn_;  // by a key's number: the last dictionary that has it
    Number dictionaries_ = 0;
};

}  // namespace lunabrook
