#include "host/json_output.h"

#include <charconv>
#include <cmath>

#include "platform/time/iso8601.h"
#include "platform/values/base64.h"

namespace lunabrook {

namespace {

// A number of single precision has the fewest digits that name that single: 96.2, not 96.19999694824219.
double shortest(double real) {
    const float single = narrowed(real);
    if (static_cast<double>(single) != real) {
        return real;
    }
    constexpr std::size_t kLongest = 32;
    char text[kLongest];
    const auto written = std::to_chars(text, text + kLongest, single);
    std::from_chars(text, written.ptr, real);
    return real;
}

struct JsonMaker {
    Json operator()(bool truth) const { return truth; }
    Json operator()(std::int64_t number) const { return number; }
    Json operator()(double real) const { return std::isfinite(real) ? Json(shortest(real)) : Json(); }
    Json operator()(const std::string& text) const { return text; }
    Json operator()(Date date) const {
        const auto text = iso8601MillisecondsFromDate(date);
        return text ? Json(*text) : Json();
    }
    Json operator()(const Data& data) const { return base64FromData(data); }
    Json operator()(const Array& array) const {
        Json json = Json::array();
        for (const Value& entry : array) {
            json.push_back(jsonFromValue(entry));
        }
        return json;
    }
    Json operator()(const Dictionary& dictionary) const { return jsonFromDictionary(dictionary); }
};

}  // namespace

Json jsonFromValue(const Value& value) { return std::visit(JsonMaker{}, value.storage()); }

Json jsonFromDictionary(const Dictionary& dictionary) {
    Json::object_t object;
    for (const auto& [key, entry] : dictionary) {
        object.emplace_back(key, jsonFromValue(entry));  // distinct already: no search, as insert() would make
    }
    return object;
}

std::string jsonText(const Json& json, int indent) {
    return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace lunabrook
