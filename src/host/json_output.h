// Values as JSON for people and scripts.
//
// Numbers of single precision are written as such. Dates are ISO 8601 in UTC to the millisecond; NaN, infinities and
// dates without a text are null; data is base64. Text that is not UTF-8 is repaired.

#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "platform/values/value.h"

namespace lunabrook {

using Json = nlohmann::ordered_json;

Json jsonFromValue(const Value& value);
Json jsonFromDictionary(const Dictionary& dictionary);

// A line; `indent` -1 keeps an object on one.
std::string jsonText(const Json& json, int indent);

}  // namespace lunabrook
