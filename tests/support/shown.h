// Dictionaries as maps of texts that a failed comparison prints well: texts as they stand, numbers as "#1.25", dates as
// "@2026-06-10T08:30:00.000Z"; containers and data as "...". A nil is {"nil"}.

#pragma once

#include <map>
#include <optional>
#include <string>

#include "platform/iso8601.h"
#include "platform/string_format.h"
#include "platform/value.h"

namespace lunabrook::test {

using Shown = std::map<std::string, std::string>;

inline std::string shown(const Value& value) {
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
    const bool isNumber =
        std::holds_alternative<std::int64_t>(value.storage()) || std::holds_alternative<bool>(value.storage());
    return isNumber ? "#" + std::to_string(value.integerValue()) : "...";
}

inline Shown shown(const Dictionary& dictionary) {
    Shown texts;
    for (const auto& [key, value] : dictionary) {
        texts[key] = shown(value);
    }
    return texts;
}

inline Shown shown(const std::optional<Dictionary>& dictionary) {
    return dictionary ? shown(*dictionary) : Shown{{"nil", ""}};
}

// One entry; "missing" without it.
inline std::string shown(const std::optional<Dictionary>& dictionary, std::string_view key) {
    const Value* value = dictionary ? valueForKey(*dictionary, key) : nullptr;
    return value != nullptr ? shown(*value) : "missing";
}

}  // namespace lunabrook::test
