#include "platform/files/private/object_code.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <bit>
#include <limits>

namespace lunabrook {

namespace {

// Property lists count seconds from 2001-01-01 00:00:00 UTC.
constexpr double kEpochOf2001 = 978307200.0;

constexpr std::uint64_t kLongCount = 0xF;  // the count follows as an integer

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char unit) { return (unit & 0x80) == 0; });
}

void appendUtf8(std::string& text, UChar32 character) {
    char units[U8_MAX_LENGTH];
    std::size_t length = 0;
    U8_APPEND_UNSAFE(units, length, character);
    text.append(units, length);
}

// Less than zero where there is none.
UChar32 nextCharacter(std::string_view text, std::size_t& index) {
    const auto* units = reinterpret_cast<const std::uint8_t*>(text.data());
    UChar32 character = 0;
    U8_NEXT(units, index, text.size(), character);
    return character;
}

std::string textOfUtf16(std::string_view payload) {
    std::string text;
    UChar32 lead = 0;  // of a character that is not complete yet
    for (; !payload.empty(); payload.remove_prefix(2)) {
        const auto unit = static_cast<UChar32>(bigEndian(payload.substr(0, 2)));
        if (U16_IS_TRAIL(unit) && lead != 0) {
            appendUtf8(text, U16_GET_SUPPLEMENTARY(lead, unit));
        } else if (!U16_IS_SURROGATE(unit)) {
            appendUtf8(text, unit);
        }
        lead = U16_IS_LEAD(unit) ? unit : 0;
    }
    return text;
}

Value valueOfInteger(std::string_view payload) {
    constexpr std::size_t kSigned = 8;  // shorter ones are not
    if (payload.size() <= kSigned) {
        return std::bit_cast<std::int64_t>(bigEndian(payload));
    }
    const auto high = std::bit_cast<std::int64_t>(bigEndian(payload.substr(0, kSigned)));
    const std::uint64_t low = bigEndian(payload.substr(kSigned));
    const WideInteger wide = WideInteger{high} * (WideInteger{1} << 64) + low;
    const auto narrow = static_cast<std::int64_t>(wide);
    return narrow == wide ? Value(narrow) : Value(static_cast<double>(wide));
}

// Nil for a width that no program writes.
std::optional<double> realOf(std::string_view payload) {
    if (payload.size() == sizeof(float)) {
        return std::bit_cast<float>(static_cast<std::uint32_t>(bigEndian(payload)));
    }
    return payload.size() == sizeof(double) ? std::optional(std::bit_cast<double>(bigEndian(payload))) : std::nullopt;
}

}  // namespace

bool isUtf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        if (nextCharacter(text, i) < 0) {
            return false;
        }
    }
    return true;
}

std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t number = 0;
    for (const char byte : bytes) {
        number = number << 8U | static_cast<std::uint8_t>(byte);
    }
    return number;
}

void appendBigEndian(std::string& bytes, std::uint64_t number, std::size_t size) {
    while (size > 0) {
        bytes += static_cast<char>(number >> 8U * --size & 0xFFU);
    }
}

ObjectHeader objectHeader(std::string_view bytes) {
    if (bytes.empty()) {
        throw ListDamage{kCutShort};
    }
    const auto marker = static_cast<std::uint8_t>(bytes.front());
    ObjectHeader header{static_cast<ObjectKind>(marker >> 4U), marker & 0xFU, 1};
    const bool isCounted =
        (header.kind >= ObjectKind::data && header.kind <= ObjectKind::utf8) || header.kind >= ObjectKind::array;
    if (isCounted && header.count == kLongCount) {
        const auto length = bytes.size() > 1 ? static_cast<std::uint8_t>(bytes[1]) : 0U;
        const std::size_t size = std::size_t{1} << (length & 0xFU);
        if (length >> 4U != static_cast<unsigned>(ObjectKind::integer) || size > 8 || bytes.size() < 2 + size) {
            throw ListDamage{kCutShort};
        }
        header.count = bigEndian(bytes.substr(2, size));
        header.size = 2 + size;
    }
    return header;
}

std::string codeOfHeader(ObjectKind kind, std::uint64_t count) {
    const auto marker = static_cast<unsigned>(kind) << 4U;
    std::string code(1, static_cast<char>(marker | std::min(count, kLongCount)));
    return count < kLongCount ? code : code + codeOf(WideInteger{count});
}

std::string codeOf(bool truth) { return truth ? "\x09" : "\x08"; }

std::string codeOf(WideInteger number) {
    const unsigned width = number < 0 || number > std::numeric_limits<std::uint32_t>::max() ? 3
                           : number > std::numeric_limits<std::uint16_t>::max()             ? 2
                           : number > std::numeric_limits<std::uint8_t>::max()              ? 1
                                                                                            : 0;
    const bool isWide = number != static_cast<std::int64_t>(number);
    std::string code(1, static_cast<char>(0x10U | (isWide ? 4 : width)));
    if (isWide) {
        appendBigEndian(code, static_cast<std::uint64_t>(number >> 64), 8);
    }
    appendBigEndian(code, static_cast<std::uint64_t>(number), isWide ? 8 : std::size_t{1} << width);
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
    if (isAscii(text)) {
        return codeOfHeader(ObjectKind::ascii, text.size()).append(text);
    }
    std::string units;
    for (std::size_t i = 0; i < text.size();) {
        const UChar32 character = nextCharacter(text, i);
        if (character < 0) {
            throw ListDamage{"holds a text that is no UTF-8"};
        }
        if (U_IS_SUPPLEMENTARY(character)) {
            appendBigEndian(units, U16_LEAD(character), 2);
        }
        const bool isPair = U_IS_SUPPLEMENTARY(character);
        appendBigEndian(units, isPair ? U16_TRAIL(character) : static_cast<char16_t>(character), 2);
    }
    return codeOfHeader(ObjectKind::utf16, units.size() / 2).append(units);
}

std::string textOfCode(std::string_view code) {
    const ObjectHeader header = objectHeader(code);
    const std::string_view payload = code.substr(header.size);
    return header.kind == ObjectKind::utf16 ? textOfUtf16(payload) : std::string(payload);
}

std::optional<Value> valueOfCode(std::string_view code) {
    const ObjectHeader header = objectHeader(code);
    const std::string_view payload = code.substr(header.size);
    switch (header.kind) {
        case ObjectKind::simple:
            return code == "\x08" || code == "\x09" ? std::optional<Value>(code == "\x09") : std::nullopt;
        case ObjectKind::integer:
            return payload.size() <= sizeof(WideInteger) ? std::optional(valueOfInteger(payload)) : std::nullopt;
        case ObjectKind::real:
            return realOf(payload);
        case ObjectKind::date: {
            const auto seconds = realOf(payload);
            return seconds ? std::optional<Value>(dateFromSecondsSince1970(*seconds + kEpochOf2001)) : std::nullopt;
        }
        case ObjectKind::data:
            return Data(payload.begin(), payload.end());
        case ObjectKind::ascii:
        case ObjectKind::utf16:
        case ObjectKind::utf8:
            return textOfCode(code);
        default:
            return std::nullopt;
    }
}

}  // namespace lunabrook
