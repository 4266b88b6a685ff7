// Property-list values, as the store and the result dictionaries hold them.
//
// Conversions are total: any value gives a number, never a fault.
//   Value{"  12.5 kg"}.floatValue() -> 12.5f     Value{Dictionary{}}.integerValue() -> 0
//   Value{1e300}.integerValue() -> the largest   Value{"yes"}.boolValue() -> true

#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/values/date.h"

namespace lunabrook {

class Value;
using Data = std::vector<std::uint8_t>;
using Array = std::vector<Value>;
using Dictionary = std::map<std::string, Value, std::less<>>;

class Value {
public:
    using Storage = std::variant<bool, std::int64_t, double, std::string, Date, Data, Array, Dictionary>;

    Value(bool value) : storage_(value) {}
    Value(int value) : storage_(std::int64_t{value}) {}
    Value(std::int64_t value) : storage_(value) {}
    Value(double value) : storage_(value) {}
    Value(const char* text) : storage_(std::string(text)) {}
    Value(std::string text) : storage_(std::move(text)) {}
    Value(Date date) : storage_(date) {}
    Value(Data data) : storage_(std::move(data)) {}
    Value(Array array);
    Value(Dictionary dictionary);

    // Text gives the number that it starts with after blanks; a date, data, array or dictionary gives 0.
    // A real beyond the single range becomes an infinity.
    float floatValue() const;
    // Cut toward zero; saturates, NaN gives 0.
    std::int64_t integerValue() const;
    // Text is true for a leading Y, y, T, t or a digit 1 to 9 after blanks, a sign and zeros.
    bool boolValue() const;

    // Null when the value is of another kind.
    const std::string* string() const { return std::get_if<std::string>(&storage_); }
    const Date* date() const { return std::get_if<Date>(&storage_); }
    const Array* array() const;
    const Dictionary* dictionary() const;

    const Storage& storage() const { return storage_; }

    friend bool operator==(const Value&, const Value&);

private:
    Storage storage_;
};

// Readers of one key. A missing key, and for the last three a value of another kind, is null or nil.
const Value* valueForKey(const Dictionary& dictionary, std::string_view key);
float floatForKey(const Dictionary& dictionary, std::string_view key, float whenMissing);
std::int64_t integerForKey(const Dictionary& dictionary, std::string_view key, std::int64_t whenMissing);
const Dictionary* dictionaryForKey(const Dictionary& dictionary, std::string_view key);
const std::string* stringForKey(const Dictionary& dictionary, std::string_view key);
std::optional<Date> dateForKey(const Dictionary& dictionary, std::string_view key);

// For keys that are named constants.
Dictionary dictionaryOf(std::initializer_list<std::pair<std::string_view, Value>> entries);

// Sets the key unless there is no value: a nil leaves its key out.
template <class Content>
void setValue(Dictionary& dictionary, std::string_view key, std::optional<Content> content) {
    if (content) {
        dictionary.insert_or_assign(std::string(key), Value(*std::move(content)));
    }
}

// The narrowing and the truncation that the conversions use: no input is undefined behaviour.
float narrowed(double value);
std::int64_t truncated(double value);

}  // namespace lunabrook
