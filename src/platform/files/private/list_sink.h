// Where readers of property lists send what they find, one object after the other: keys and values of a dictionary in
// turn, each as it is coded in the binary form (a marker of kind and count, for fifteen or more a count, the payload).
//
//   {"a": [true]} -> open(dictionary) add("\x51" "a") open(array) add("\x09") close() close()

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lunabrook {

// What is wrong with a list. Thrown by readers and sinks; it does not leave this room.
struct ListDamage {
    const char* what;
};

inline constexpr const char* kCutShort = "is cut short or damaged";
inline constexpr const char* kNoList = "is not a property list, or a damaged one";

inline constexpr std::size_t kMaximumPropertyListDepth = 128;
inline constexpr std::size_t kMaximumPropertyListValues = 4'000'000;

// Of a list with its shared values written out.
struct ListSize {
    std::size_t values = 0;  // keys and containers as well
    std::size_t bytes = 0;   // of what is no container

    // More than there may be is damage.
    void add(const ListSize& other) {
        constexpr std::size_t kMostBytes = std::size_t{256} << 20;
        values += other.values;
        bytes += other.bytes;
        if (values > kMaximumPropertyListValues) {
            throw ListDamage{"holds more than four million values"};
        }
        if (bytes > kMostBytes) {
            throw ListDamage{"holds more than 256 MiB with shared values written out"};
        }
    }
};

// The upper half of a marker.
enum class ObjectKind : std::uint8_t {
    simple,  // null, a boolean, a filler
    integer,
    real,
    date,
    data,
    ascii,
    utf16,
    utf8,
    reference,  // of an archiver
    array = 0xA,
    orderedSet,
    set,
    dictionary,
};

class ListSink {
public:
    virtual ~ListSink() = default;

    // Something that is no container. The code is whole.
    void add(std::string_view code) {
        size_.add({1, code.size()});
        take(code);
    }
    void open(ObjectKind kind) {
        size_.add({1, 0});
        if (++depth_ > kMaximumPropertyListDepth) {
            throw ListDamage{"is nested deeper than 128 levels"};
        }
        begin(kind);
    }
    void close() {
        --depth_;
        end();
    }

protected:
    virtual void take(std::string_view code) = 0;
    virtual void begin(ObjectKind kind) = 0;
    virtual void end() = 0;

    void startCountingAgain() {
        depth_ = 0;
        size_ = {};
    }

private:
    std::size_t depth_ = 0;
    ListSize size_;
};

// Send a whole list. The kind of its root.
ObjectKind readBinaryPropertyList(std::string_view bytes, ListSink& sink);
ObjectKind readXmlPropertyList(std::string_view bytes, ListSink& sink);

}  // namespace lunabrook
