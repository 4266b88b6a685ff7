// Writes SVG: elements in elements, with numbers short and every text escaped.
//
//   Svg svg;
//   svg.open("g", {{"class", "card"}});
//   svg.text("text", {{"x", 2.5}}, "a < b");
//   svg.close();
//   svg.take() -> <g class="card"><text x="2.5">a &lt; b</text></g>

#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lunabrook {

// At most two decimals; what is not finite is 0: "0.5", "-12", "3.33".
std::string svgNumber(double value);

class Svg {
public:
    struct Attribute {
        Attribute(const char* called, double number) : name(called), value(svgNumber(number)) {}
        Attribute(const char* called, std::string_view text) : name(called), value(text) {}

        const char* name;
        std::string value;
    };
    using Attributes = std::initializer_list<Attribute>;

    void open(const char* element, Attributes attributes);
    void close();
    void empty(const char* element, Attributes attributes);
    // Text without characters that XML forbids; line ends and runs of blanks are the reader's to keep or to join.
    void text(const char* element, Attributes attributes, std::string_view text);
    // The same with another element's text at its end.
    void text(const char* element, Attributes attributes, std::string_view text, const char* inner, Attributes ofInner,
              std::string_view innerText);

    std::string take() { return std::move(written_); }

private:
    void start(const char* element, Attributes attributes);

    std::string written_;
    std::vector<const char*> opened_;
};

}  // namespace lunabrook
