// A property list between two forms, as one text: keys and values in turn as the binary form codes them, a container as
// its kind, its entries and an end. Readers make it, values and files are made of it.
//
//   {"a": [true]} <-> "\xD0" "\x51" "a" "\xA0" "\x09" "\xE0" "\xE0"

#pragma once

#include "platform/files/private/object_code.h"

namespace lunabrook {

// Of a list with its shared values written out. More than there may be is damage.
class ListSize {
public:
    void add(std::size_t bytes) {
        constexpr std::size_t kMostValues = 4'000'000;  // keys and containers as well
        constexpr std::size_t kMostBytes = std::size_t{256} << 20;
        require(++values_ <= kMostValues, "holds more than four million values");
        require((bytes_ += bytes) <= kMostBytes, "holds more than 256 MiB with shared values written out");
    }

private:
    std::size_t values_ = 0;
    std::size_t bytes_ = 0;
};

class FlatList {
public:
    // Something that is no container, or a key. The code is whole.
    void add(std::string_view code) {
        size_.add(code.size());
        codes_ += code;
    }
    void open(ObjectKind kind) {
        constexpr int kMostLevels = 128;
        require(++depth_ <= kMostLevels, "is nested deeper than 128 levels");
        add(codeOfHeader(kind));
    }
    void close() {
        --depth_;
        codes_ += codeOfHeader(ObjectKind::end);
    }

    const std::string& codes() const { return codes_; }

private:
    std::string codes_;
    ListSize size_;
    int depth_ = 0;
};

// Add a whole list.
void readBinaryPropertyList(std::string_view bytes, FlatList& list);
void readXmlPropertyList(std::string_view bytes, FlatList& list);

// The binary form of a dictionary with these keys and values. Equal scalars are written once; of a doubled key the
// first one counts.
std::string binaryPropertyList(std::string_view entries);

}  // namespace lunabrook
