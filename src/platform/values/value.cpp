#include "platform/values/value.h"

#include <locale.h>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace lunabrook {

namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

std::string_view withoutLeadingBlanks(std::string_view text) {
    const std::size_t start = text.find_first_not_of(kBlanks);
    return start == std::string_view::npos ? std::string_view{} : text.substr(start);
}

std::size_t digitsFrom(std::string_view text, std::size_t start) {
    const std::size_t end = text.find_first_not_of("0123456789", start);
    return (end == std::string_view::npos ? text.size() : end) - start;
}

std::size_t signLength(std::string_view text) { return text.starts_with('+') || text.starts_with('-') ? 1 : 0; }

// The decimal number that the text starts with: no hexadecimal, no "inf" or "nan"; empty when there is none.
std::string leadingDecimal(std::string_view text) {
    std::size_t end = signLength(text);
    const std::size_t whole = digitsFrom(text, end);
    end += whole;
    if (end < text.size() && text[end] == '.') {
        const std::size_t fraction = digitsFrom(text, end + 1);
        if (whole + fraction == 0) {
            return {};
        }
        end += 1 + fraction;
    } else if (whole == 0) {
        return {};
    }
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        const std::size_t sign = signLength(text.substr(end + 1));
        if (const std::size_t exponent = digitsFrom(text, std::min(end + 1 + sign, text.size())); exponent > 0) {
            end += 1 + sign + exponent;
        }
    }
    return std::string(text.substr(0, end));
}

// strtod's rounding, overflow and underflow, with "." whatever the process locale.
double realFromText(std::string_view text) {
    static const locale_t kPlain = newlocale(LC_ALL_MASK, "C", nullptr);
    const std::string number = leadingDecimal(withoutLeadingBlanks(text));
    return number.empty() ? 0.0 : strtod_l(number.c_str(), nullptr, kPlain);
}

std::int64_t integerFromText(std::string_view text) {
    const std::string_view trimmed = withoutLeadingBlanks(text);
    const std::size_t sign = signLength(trimmed);
    const bool negative = trimmed.starts_with('-');
    std::int64_t number = 0;
    for (const char digit : trimmed.substr(sign, digitsFrom(trimmed, sign))) {
        const int step = negative ? '0' - digit : digit - '0';
        if (__builtin_mul_overflow(number, std::int64_t{10}, &number) ||
            __builtin_add_overflow(number, std::int64_t{step}, &number)) {
            return negative ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
        }
    }
    return number;
}

bool truthFromText(std::string_view text) {
    std::string_view rest = withoutLeadingBlanks(text);
    if (rest.empty()) {
        return false;
    }
    if (std::string_view("YyTt").find(rest.front()) != std::string_view::npos) {
        return true;
    }
    rest.remove_prefix(signLength(rest));
    rest.remove_prefix(std::min(rest.find_first_not_of('0'), rest.size()));
    return !rest.empty() && rest.front() >= '1' && rest.front() <= '9';
}

}  // namespace

Value::Value(Array array) : storage_(std::move(array)) {}
Value::Value(Dictionary dictionary) : storage_(std::move(dictionary)) {}

const Array* Value::array() const { return std::get_if<Array>(&storage_); }
const Dictionary* Value::dictionary() const { return std::get_if<Dictionary>(&storage_); }

bool operator==(const Value& left, const Value& right) { return left.storage_ == right.storage_; }

float Value::floatValue() const {
    if (const auto* real = std::get_if<double>(&storage_)) {
        return narrowed(*real);
    }
    if (const auto* integer = std::get_if<std::int64_t>(&storage_)) {
        return static_cast<float>(*integer);
    }
    if (const auto* truth = std::get_if<bool>(&storage_)) {
        return *truth ? 1.0F : 0.0F;
    }
    const std::string* text = string();
    return text != nullptr ? narrowed(realFromText(*text)) : 0.0F;
}

std::int64_t Value::integerValue() const {
    if (const auto* real = std::get_if<double>(&storage_)) {
        return truncated(*real);
    }
    if (const auto* integer = std::get_if<std::int64_t>(&storage_)) {
        return *integer;
    }
    if (const auto* truth = std::get_if<bool>(&storage_)) {
        return *truth ? 1 : 0;
    }
    const std::string* text = string();
    return text != nullptr ? integerFromText(*text) : 0;
}

bool Value::boolValue() const {
    if (const auto* real = std::get_if<double>(&storage_)) {
        return *real != 0.0;
    }
    if (const auto* integer = std::get_if<std::int64_t>(&storage_)) {
        return *integer != 0;
    }
    if (const auto* truth = std::get_if<bool>(&storage_)) {
        return *truth;
    }
    const std::string* text = string();
    return text != nullptr && truthFromText(*text);
}

const Value* valueForKey(const Dictionary& dictionary, std::string_view key) {
    const auto entry = dictionary.find(key);
    return entry == dictionary.end() ? nullptr : &entry->second;
}

float floatForKey(const Dictionary& dictionary, std::string_view key, float whenMissing) {
    const Value* value = valueForKey(dictionary, key);
    return value != nullptr ? value->floatValue() : whenMissing;
}

std::int64_t integerForKey(const Dictionary& dictionary, std::string_view key, std::int64_t whenMissing) {
    const Value* value = valueForKey(dictionary, key);
    return value != nullptr ? value->integerValue() : whenMissing;
}

const Dictionary* dictionaryForKey(const Dictionary& dictionary, std::string_view key) {
    const Value* value = valueForKey(dictionary, key);
    return value != nullptr ? value->dictionary() : nullptr;
}

const std::string* stringForKey(const Dictionary& dictionary, std::string_view key) {
    const Value* value = valueForKey(dictionary, key);
    return value != nullptr ? value->string() : nullptr;
}

std::optional<Date> dateForKey(const Dictionary& dictionary, std::string_view key) {
    const Value* value = valueForKey(dictionary, key);
    const Date* date = value != nullptr ? value->date() : nullptr;
    return date != nullptr ? std::optional(*date) : std::nullopt;
}

Dictionary dictionaryOf(std::initializer_list<std::pair<std::string_view, Value>> entries) {
    Dictionary dictionary;
    for (const auto& [key, value] : entries) {
        dictionary.insert_or_assign(std::string(key), value);
    }
    return dictionary;
}

float narrowed(double value) {
    // The first double that rounds past the largest single is half a step above it.
    constexpr double kFirstBeyond = 0x1.ffffffp127;
    if (value >= kFirstBeyond) {
        return std::numeric_limits<float>::infinity();
    }
    if (value <= -kFirstBeyond) {
        return -std::numeric_limits<float>::infinity();
    }
    constexpr double kLargest = std::numeric_limits<float>::max();
    return static_cast<float>(std::isnan(value) ? value : std::clamp(value, -kLargest, kLargest));
}

std::int64_t truncated(double value) {
    constexpr double kFirstBeyond = 0x1p63;
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= kFirstBeyond) {
        return std::numeric_limits<std::int64_t>::max();
    }
    return value < -kFirstBeyond ? std::numeric_limits<std::int64_t>::min() : static_cast<std::int64_t>(value);
}

}  // namespace lunabrook
