// Text from a format and typed arguments; the format may come from a string table and is not trusted.
//
//   stringWithFormat("%@: %.1f%%", {"Debt", 12.5})                  "Debt: 12.5%"
//   localizedStringWithFormat(german, "%@: %.1f%%", {"Debt", 12.5}) "Debt: 12,5%"
//
// Placeholders: %@ (text), %d %i %u %ld %lld (integer), %f with flags, width and precision (real), %% and positional
// forms such as %2$@. One whose argument is missing or of the other kind (text, number) prints "(null)" or zero in its
// own form; a lone % or an unknown conversion prints as it stands.

#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/text/locale.h"

namespace lunabrook {

class FormatArgument {
public:
    using Content = std::variant<std::string, std::int64_t, double>;

    FormatArgument(std::string text) : content_(std::move(text)) {}
    FormatArgument(const char* text) : content_(std::string(text)) {}
    FormatArgument(std::optional<std::string> text) : content_(std::move(text).value_or("(null)")) {}
    FormatArgument(int number) : content_(std::int64_t{number}) {}
    FormatArgument(std::int64_t number) : content_(number) {}
    FormatArgument(double number) : content_(number) {}

    const Content& content() const { return content_; }

private:
    Content content_;
};

// Numbers as C prints them, exact, with "." whatever the process locale; "nan" and "inf" without a lost sign of NaN.
std::string stringWithFormat(std::string_view format, std::initializer_list<FormatArgument> arguments);

// Numbers in the locale's way: its separator, digits, minus sign and grouping; half-even on the shortest decimal.
std::string localizedStringWithFormat(const Locale& locale, std::string_view format,
                                      std::initializer_list<FormatArgument> arguments);

}  // namespace lunabrook
