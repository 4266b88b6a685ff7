#include "platform/files/private/object_code.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <bit>
#include <vector>

namespace lunabrook {

namespace {

// Property lists count seconds from 2001-01-01 00:00:00 UTC.
constexpr double kEpochOf2001 = 978307200.0;

constexpr std::uint64_t kLongCount = 0xF;  // the count follows as an integer

// Only the widest integers and those of eight bytes have a sign.
Value valueOfInteger(std::string_view payload) {
    const auto low = std::bit_cast<std::int64_t>(bigEndian(payload.substr(payload.size() / 16 * 8)));
    const WideInteger high = payload.size() < 16 ? 0 : std::bit_cast<std::int64_t>(bigEndian(payload.substr(0, 8)));
    const WideInteger wide = payload.size() < 16 ? low : (high << 64) + static_cast<std::uint64_t>(low);
    return wide == low ? Value(low) : Value(static_cast<double>(wide));
}

// Nil for a width that no program writes.
std::optional<double> realOf(std::string_view payload) {
    if (payload.size() == sizeof(float)) {
        return std::bit_cast<float>(static_cast<std::uint32_t>(bigEndian(payload)));
    }
    return payload.size() == sizeof(double) ? std::optional(std::bit_cast<double>(bigEndian(payload))) : std::nullopt;
}

// The entries that have a meaning, up to the end.
Array takeArray(std::string_view& rest) {
    Array array;
    for (Object entry; takeEntry(rest, entry);) {
        if (auto value = valueOf(entry, rest)) {
            array.push_back(*std::move(value));
        }
    }
    return array;
}

}  // namespace

Object objectAt(std::string_view bytes) {
    require(!bytes.empty(), kCutShort);
    const auto marker = static_cast<std::uint8_t>(bytes.front());
    Object object{static_cast<ObjectKind>(marker >> 4U), marker & 0xFU, {}, {}};
    std::string_view rest = bytes.substr(1);
    std::uint64_t unitSize = object.isContainer() ? 0 : 1;
    switch (object.kind) {
        case ObjectKind::simple:
            require(std::string_view("\x00\x08\x09\x0F", 4).find(bytes.front()) != std::string_view::npos, kNoList);
            object.count = 0;
            break;
        case ObjectKind::integer:
        case ObjectKind::real:
        case ObjectKind::date:
            object.count = std::uint64_t{1} << object.count;
            break;
        case ObjectKind::reference:
            ++object.count;
            break;
        case ObjectKind::utf16:
            unitSize = 2;
            [[fallthrough]];
        default:
            require(marker >> 4U != 9, kNoList);
            if (object.count == kLongCount) {
                require(!rest.empty() && rest.front() >> 4 == static_cast<int>(ObjectKind::integer), kCutShort);
                const Object count = takeObject(rest);
                require(count.payload.size() <= 8, kCutShort);
                object.count = bigEndian(count.payload);
            }
    }
    require(unitSize == 0 || object.count <= rest.size() / unitSize, kCutShort);
    object.payload = rest.substr(0, object.count * unitSize);
    object.code = bytes.substr(0, bytes.size() - rest.size() + object.payload.size());
    return object;
}

Object takeObject(std::string_view& rest) {
    const Object object = objectAt(rest);
    rest.remove_prefix(object.code.size());
    return object;
}

bool takeEntry(std::string_view& rest, Object& entry) {
    entry = rest.empty() ? Object() : takeObject(rest);
    return !entry.code.empty() && entry.kind != ObjectKind::end;
}

std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t number = 0;
    for (const char byte : bytes) {
        number = number << 8U | static_cast<std::uint8_t>(byte);
    }
    return number;
}

void appendBigEndian(std::string& bytes, WideInteger number, std::size_t size) {
    while (size > 0) {
        bytes += static_cast<char>(number >> 8U * --size & 0xFFU);
    }
}

std::size_t sizeFor(std::uint64_t number) {
    return std::bit_ceil((static_cast<std::size_t>(std::bit_width(number | 1U)) + 7) / 8);
}

std::string codeOfHeader(ObjectKind kind, std::uint64_t count) {
    const auto marker = static_cast<unsigned>(kind) << 4U;
    std::string code(1, static_cast<char>(marker | std::min(count, kLongCount)));
    return count < kLongCount ? code : code + codeOf(WideInteger{count});
}

std::string codeOf(bool truth) { return truth ? "\x09" : "\x08"; }

std::string codeOf(WideInteger number) {
    const bool isWide = number != static_cast<std::int64_t>(number);
    const std::size_t size = isWide ? sizeof number : sizeFor(static_cast<std::uint64_t>(number));
    std::string code(1, static_cast<char>(0x10 | std::countr_zero(size)));
    appendBigEndian(code, number, size);
    return code;
}

std::string codeOf(double real) {
    std::string code = "\x23";
    appendBigEndian(code, std::bit_cast<std::uint64_t>(real), sizeof real);
    return code;
}

std::string codeOf(Date date) {
    std::string code = codeOf(secondsSince1970(date) - kEpochOf2001);
    code.front() = '\x33';
    return code;
}

std::string codeOf(const Data& data) {
    return codeOfHeader(ObjectKind::data, data.size()).append(data.begin(), data.end());
}

std::string codeOf(std::string_view text) {
    if (std::none_of(text.begin(), text.end(), [](char unit) { return (unit & 0x80) != 0; })) {
        return codeOfHeader(ObjectKind::ascii, text.size()).append(text);
    }
    const auto units = utf16Of(text);
    require(units.has_value(), "holds a text that is no UTF-8");
    std::string code = codeOfHeader(ObjectKind::utf16, units->size());
    for (const char16_t unit : *units) {
        appendBigEndian(code, unit, sizeof unit);
    }
    return code;
}

std::optional<std::u16string> utf16Of(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::u16string units(text.size(), u'\0');
    std::size_t length = 0;
    for (std::size_t i = 0; i < text.size();) {
        UChar32 character = 0;
        U8_NEXT(bytes, i, text.size(), character);
        if (character < 0) {
            return std::nullopt;
        }
        U16_APPEND_UNSAFE(units, length, character);
    }
    units.resize(length);
    return units;
}

std::optional<Value> valueOf(const Object& object, std::string_view& rest) {
    switch (object.kind) {
        case ObjectKind::simple:
            return object.code == "\x08" || object.code == "\x09" ? std::optional<Value>(object.code == "\x09")
                                                                  : std::nullopt;
        case ObjectKind::integer:
            return object.count <= sizeof(WideInteger) ? std::optional(valueOfInteger(object.payload)) : std::nullopt;
        case ObjectKind::real:
            return realOf(object.payload);
        case ObjectKind::date: {
            const auto seconds = realOf(object.payload);
            return seconds ? std::optional<Value>(dateFromSecondsSince1970(*seconds + kEpochOf2001)) : std::nullopt;
        }
        case ObjectKind::data:
            return Data(object.payload.begin(), object.payload.end());
        case ObjectKind::ascii:
        case ObjectKind::utf16:
        case ObjectKind::utf8:
            return textOf(object);
        case ObjectKind::array:
        case ObjectKind::orderedSet:
        case ObjectKind::set:
            return takeArray(rest);
        case ObjectKind::dictionary:
            return takeDictionary(rest);
        default:
            return std::nullopt;
    }
}

Dictionary takeDictionary(std::string_view& rest) {
    Dictionary dictionary;
    std::vector<Dictionary::iterator> left;  // their first value has no meaning
    for (Object key; takeEntry(rest, key);) {
        const std::size_t before = dictionary.size();  // keys are mostly in order, and then the hint saves a search
        const auto place = dictionary.try_emplace(dictionary.end(), textOf(key), false);
        auto value = valueOf(takeObject(rest), rest);
        if (dictionary.size() > before) {
            value ? void(place->second = *std::move(value)) : left.push_back(place);
        }
    }
    for (const auto place : left) {
        dictionary.erase(place);
    }
    return dictionary;
}

std::string textOf(const Object& object) {
    if (object.kind != ObjectKind::utf16) {
        return std::string(object.payload);
    }
    std::u16string units;
    for (std::string_view rest = object.payload; !rest.empty(); rest.remove_prefix(2)) {
        units += static_cast<char16_t>(bigEndian(rest.substr(0, 2)));
    }
    std::string text(units.size() * 3, '\0');  // of characters beyond three bytes there are two units
    std::size_t length = 0;
    for (std::size_t i = 0; i < units.size();) {
        UChar32 character = 0;
        U16_NEXT(units, i, units.size(), character);
        if (!U_IS_SURROGATE(character)) {
            U8_APPEND_UNSAFE(text, length, character);
        }
    }
    text.resize(length);
    return text;
}

}  // namespace lunabrook
