// Property lists, binary and XML: bytes -> values, and bytes -> bytes with some keys changed.
//
// Reading is one pass over untrusted bytes with its limits built in: at most 64 MiB (8 MiB of XML), nested at most 128
// deep, at most four million values with shared ones written out. A changed list is written from the bytes of the old
// one, so values that have no meaning here survive to the bit. Of a doubled key the first one counts.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/values/value.h"

namespace lunabrook {

inline constexpr std::size_t kMaximumPropertyListBytes = std::size_t{64} << 20;

// A list in the making. What is said first about a key counts: changes first, then the list that they change.
class PropertyList {
public:
    void set(std::string_view key, const Value& value) { change(key, &value); }
    void remove(std::string_view key) { change(key, nullptr); }
    // Takes over the keys of another list, as they stand there. What is wrong with its bytes, or nil.
    std::optional<std::string> merge(std::string_view bytes);
    void merge(const PropertyList& other);

    // What it holds: values without a meaning here (an archiver's reference, a null) are left out.
    Dictionary dictionary() const;

    // The binary form, or why other readers of the format, or this one, would refuse it.
    struct Unwritable {
        std::string why;  // "would be larger than 64 MiB"
    };
    std::variant<std::string, Unwritable> binary() const;

private:
    void change(std::string_view key, const Value* value);

    std::string entries_;               // as in a flat list
    std::optional<std::string> fault_;  // the first one
};

// What the list holds, or what is wrong with it ("is cut short or damaged").
std::variant<Dictionary, std::string> dictionaryFromPropertyList(std::string_view bytes);

}  // namespace lunabrook
