// How single objects are coded in a binary property list: Value(true) <-> "\x09", Value("ab") <-> "\x52" "ab".

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/values/value.h"

namespace lunabrook {

// What is wrong with a list. It does not leave this room.
struct ListDamage {
    const char* what;
};
inline constexpr const char* kCutShort = "is cut short or damaged";
inline constexpr const char* kNoList = "is not a property list, or a damaged one";
inline void require(bool isTrue, const char* otherwise) { isTrue ? void() : throw ListDamage{otherwise}; }

// The upper half of a marker. The last two are a flat list's own; `nothing` is in the place of a value.
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
    end,
    nothing,
};

struct Object {
    ObjectKind kind = ObjectKind::nothing;
    std::uint64_t count = 0;   // bytes, units or entries
    std::string_view code;     // a container's has no entries
    std::string_view payload;  // the code without marker and count

    bool isContainer() const { return kind >= ObjectKind::array && kind <= ObjectKind::dictionary; }
};

// The object at the start of the bytes; damage when it is not whole or none.
Object objectAt(std::string_view bytes);
Object takeObject(std::string_view& rest);
// The next one of what is in a container of a flat list; false behind the last.
bool takeEntry(std::string_view& rest, Object& entry);

std::uint64_t bigEndian(std::string_view bytes);
__extension__ typedef __int128 WideInteger;
void appendBigEndian(std::string& bytes, WideInteger number, std::size_t size);
// 1, 2, 4 or 8 bytes.
std::size_t sizeFor(std::uint64_t number);

std::string codeOfHeader(ObjectKind kind, std::uint64_t count = 0);
std::string codeOf(bool truth);
std::string codeOf(WideInteger number);
std::string codeOf(double real);
std::string codeOf(Date date);
std::string codeOf(const Data& data);
// Text that is no UTF-8 is damage.
std::string codeOf(std::string_view text);
// Nil when the text is no UTF-8.
std::optional<std::u16string> utf16Of(std::string_view text);

// Of an object that was taken from a flat list; takes what is in it. Nil when it has no meaning here.
std::optional<Value> valueOf(const Object& object, std::string_view& rest);
// The entries up to the end; of a doubled key the first one counts.
Dictionary takeDictionary(std::string_view& rest);
// The text's bytes as they stand when they are no Unicode; unpaired halves of characters are left out.
std::string textOf(const Object& object);

}  // namespace lunabrook
