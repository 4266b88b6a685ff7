// Property lists, binary and XML: bytes <-> a tree that keeps every value exactly, and Values read from it.
//
// The bytes are checked before the parser sees them: at most 64 MiB, nested at most 128 deep, at most four million
// values once shared ones are written out. The tree is what a changed file is written from, so values that this program
// does not understand survive to the bit.

#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "platform/values/value.h"

namespace lunabrook {

inline constexpr std::size_t kMaximumPropertyListBytes = std::size_t{64} << 20;
inline constexpr int kMaximumPropertyListDepth = 128;
inline constexpr std::size_t kMaximumPropertyListValues = 4'000'000;

// A property list whose root is a dictionary.
class PropertyList {
public:
    PropertyList();  // an empty dictionary
    PropertyList(PropertyList&&) noexcept;
    PropertyList& operator=(PropertyList&&) noexcept;
    ~PropertyList();

    // The list, or what is wrong with the bytes ("is cut short", "its root is not a dictionary").
    static std::variant<PropertyList, std::string> fromBytes(std::string_view bytes);

    // Everything, converted. Values without a meaning here (archiver references) are left out.
    Dictionary dictionary() const;

    void set(std::string_view key, const Value& value);
    void remove(std::string_view key);
    // Takes over every key of the other list, as it stands there.
    void merge(const PropertyList& other);

    // The binary form, or why it cannot be written without a loss.
    struct Unwritable {
        std::string why;  // "would be larger than 64 MiB"
    };
    std::variant<std::string, Unwritable> binary() const;

private:
    struct Tree;
    std::unique_ptr<Tree> tree_;
};

}  // namespace lunabrook
