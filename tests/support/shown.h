// Dictionaries as one line of text: "bankPercent: #1 | bedTime: @2026-06-09T19:30:00.000Z | latestBedTime: 21:30".
//
// Keys in alphabetical order; "#" marks a number (at most four decimals), "@" a date, "..." a container or data; "nil"
// for a nil.

#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "platform/text/string_format.h"
#include "platform/time/iso8601.h"
#include "platform/values/value.h"

namespace lunabrook::test {

inline std::string shownValue(const Value& value) {
    if (value.string() != nullptr) {
        return *value.string();
    }
    if (value.date() != nullptr) {
        return "@" + iso8601MillisecondsFromDate(*value.date()).value_or("never");
    }
    if (const auto* real = std::get_if<double>(&value.storage())) {
        std::string digits = stringWithFormat("%.4f", {*real});
        digits.erase(digits.find_last_not_of('0') + 1);
        return "#" + (digits.ends_with('.') ? digits.substr(0, digits.size() - 1) : digits);
    }
    const bool isInteger = std::holds_alternative<std::int64_t>(value.storage());
    return isInteger ? "#" + std::to_string(value.integerValue()) : "...";
}

inline std::string shown(const std::optional<Dictionary>& dictionary) {
    std::string line;
    for (const auto& [key, value] : dictionary.value_or(Dictionary{})) {
        line += (line.empty() ? "" : " | ") + key + ": " + shownValue(value);
    }
    return dictionary ? line : "nil";
}

// Some entries, in the order of the keys: "Optimal | #1.25 | missing"; "nil" without a dictionary.
inline std::string shown(const std::optional<Dictionary>& dictionary, std::initializer_list<std::string_view> keys) {
    std::string line;
    for (const std::string_view& key : keys) {
        const Value* value = dictionary ? valueForKey(*dictionary, key) : nullptr;
        line += (&key == keys.begin() ? "" : " | ") + (value != nullptr ? shownValue(*value) : "missing");
    }
    return dictionary ? line : "nil";
}

}  // namespace lunabrook::test
