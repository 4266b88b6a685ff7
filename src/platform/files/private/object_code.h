// How single objects are coded in a binary property list: Value(true) <-> "\x09", Value("ab") <-> "\x52" "ab".

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/files/private/list_sink.h"
#include "platform/values/value.h"

namespace lunabrook {

__extension__ typedef __int128 WideInteger;

struct ObjectHeader {
    ObjectKind kind;
    std::uint64_t count;  // bytes, units or entries; of a simple object which one it is
    std::size_t size;     // of the header
};

// The header at the start of the bytes, or kCutShort.
ObjectHeader objectHeader(std::string_view bytes);

bool isUtf8(std::string_view text);
std::uint64_t bigEndian(std::string_view bytes);
void appendBigEndian(std::string& bytes, std::uint64_t number, std::size_t size);

std::string codeOfHeader(ObjectKind kind, std::uint64_t count);
std::string codeOf(bool truth);
std::string codeOf(WideInteger number);
std::string codeOf(double real);
std::string codeOf(Date date);
std::string codeOf(const Data& data);
// Text that is no UTF-8 is damage.
std::string codeOf(std::string_view text);

// Nil when the object has no meaning here.
std::optional<Value> valueOfCode(std::string_view code);
// The text's bytes as they stand when they are no Unicode; unpaired halves of characters are left out.
std::string textOfCode(std::string_view code);

}  // namespace lunabrook
