#include "command/svg.h"

#include <charconv>
#include <cmath>

namespace lunabrook {

namespace {

std::string escaped(std::string_view text) {
    std::string safe;
    for (const char sign : text) {
        switch (sign) {
            case '&':
                safe += "&amp;";
                break;
            case '<':
                safe += "&lt;";
                break;
            case '>':
                safe += "&gt;";
                break;
            case '"':
                safe += "&quot;";
                break;
            default:
                safe += sign;
        }
    }
    return safe;
}

}  // namespace

std::string svgNumber(double value) {
    constexpr double kHundredths = 100;
    constexpr double kFarthest = 1e6;  // no picture is that large
    constexpr std::size_t kLongest = 32;
    const double rounded = std::round(value * kHundredths) / kHundredths;
    if (!(std::abs(rounded) <= kFarthest) || rounded == 0) {
        return "0";
    }
    char digits[kLongest];
    return {digits, std::to_chars(digits, digits + kLongest, rounded).ptr};
}

void Svg::start(const char* element, Attributes attributes) {
    written_ += "<";
    written_ += element;
    for (const Attribute& attribute : attributes) {
        if (!attribute.value.empty()) {
            written_ += std::string(" ") + attribute.name + "=\"" + escaped(attribute.value) + "\"";
        }
    }
}

void Svg::open(const char* element, Attributes attributes) {
    start(element, attributes);
    written_ += ">\n";
    opened_.push_back(element);
}

void Svg::close() {
    written_ += std::string("</") + opened_.back() + ">\n";
    opened_.pop_back();
}

void Svg::empty(const char* element, Attributes attributes) {
    start(element, attributes);
    written_ += "/>\n";
}

void Svg::text(const char* element, Attributes attributes, std::string_view text) {
    start(element, attributes);
    written_ += ">" + escaped(text) + "</" + element + ">\n";
}

void Svg::text(const char* element, Attributes attributes, std::string_view text, const char* inner, Attributes ofInner,
               std::string_view innerText) {
    start(element, attributes);
    written_ += ">" + escaped(text);
    start(inner, ofInner);
    written_ += ">" + escaped(innerText) + "</" + inner + "></" + element + ">\n";
}

}  // namespace lunabrook
