#include "platform/text/string_format.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <span>
#include <tuple>

#include "platform/text/private/icu.h"
#include "platform/text/private/placeholder.h"
#include "platform/values/value.h"

namespace lunabrook {

namespace {

// A number as text, still without what a width adds.
struct NumberText {
    std::string sign;
    std::string digits;
    std::string zero = "0";  // goes between sign and digits when zeros fill up; empty when they do not
};

std::int64_t integerContent(const FormatArgument* argument) {
    if (argument == nullptr) {
        return 0;
    }
    if (const auto* real = std::get_if<double>(&argument->content())) {
        return truncated(*real);
    }
    const auto* integer = std::get_if<std::int64_t>(&argument->content());
    return integer != nullptr ? *integer : 0;
}

double realContent(const FormatArgument* argument) {
    const auto* real = argument != nullptr ? std::get_if<double>(&argument->content()) : nullptr;
    return real != nullptr ? *real : static_cast<double>(integerContent(argument));
}

// Decimal digits, after a "-" when negative. %u wraps as C's does: at 32 bits, or at 64 when it is long or 32 do not
// hold the number.
std::string integerDigits(const Placeholder& placeholder, const FormatArgument* argument) {
    const std::int64_t number = integerContent(argument);
    if (placeholder.conversion != 'u' || number >= 0) {
        return std::to_string(number);
    }
    const bool isShort = !placeholder.isLong && number >= std::numeric_limits<std::int32_t>::min();
    return isShort ? std::to_string(static_cast<std::uint32_t>(number))
                   : std::to_string(static_cast<std::uint64_t>(number));
}

std::string signText(const Placeholder& placeholder, bool isNegative) {
    return isNegative ? "-" : placeholder.showsPlus ? "+" : placeholder.showsBlank ? " " : "";
}

NumberText plainInteger(const Placeholder& placeholder, const FormatArgument* argument) {
    NumberText text{"", integerDigits(placeholder, argument)};
    const bool isNegative = text.digits.front() == '-';
    text.digits.erase(0, isNegative ? 1 : 0);
    text.sign = placeholder.conversion == 'u' ? "" : signText(placeholder, isNegative);
    if (placeholder.precision) {
        const auto least = static_cast<std::size_t>(*placeholder.precision);
        if (least == 0 && text.digits == "0") {
            text.digits.clear();  // as C does
        }
        text.digits.insert(0, least > text.digits.size() ? least - text.digits.size() : 0, '0');
        text.zero.clear();
    }
    return text;
}

NumberText plainReal(const Placeholder& placeholder, const FormatArgument* argument) {
    const double number = realContent(argument);
    const std::string sign = signText(placeholder, std::signbit(number) && !std::isnan(number));
    if (!std::isfinite(number)) {
        return {sign, std::isnan(number) ? "nan" : "inf", ""};
    }
    std::array<char, 1024> digits;  // at most 309 before the point and 512 behind it
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), std::fabs(number),
                                       std::chars_format::fixed, placeholder.precision.value_or(kUsualFractionDigits));
    return {sign, std::string(digits.data(), written.ptr)};
}

const Locale::Data::NumberFormatter& numberFormatter(Locale::Data& data, const Placeholder& placeholder) {
    const bool isReal = placeholder.conversion == 'f';
    const bool showsPlus = placeholder.showsPlus && placeholder.conversion != 'u';
    const int fractionDigits = isReal ? placeholder.precision.value_or(kUsualFractionDigits) : 0;
    const int leastDigits = isReal ? 1 : std::max(placeholder.precision.value_or(1), 1);
    const std::tuple key(fractionDigits, leastDigits, showsPlus);
    const auto known = data.numberFormatters.find(key);
    if (known != data.numberFormatters.end()) {
        return known->second;
    }
    auto formatter = numbersOf(data)
                         .grouping(UNUM_GROUPING_AUTO)
                         .roundingMode(UNUM_ROUND_HALFEVEN)
                         .precision(icu::number::Precision::fixedFraction(fractionDigits))
                         .integerWidth(icu::number::IntegerWidth::zeroFillTo(leastDigits))
                         .sign(showsPlus ? UNUM_SIGN_ALWAYS : UNUM_SIGN_AUTO);
    return data.numberFormatters.emplace(key, std::move(formatter)).first->second;
}

// A NaN has no sign to show.
double shownReal(double number) { return std::isnan(number) ? std::fabs(number) : number; }

NumberText localizedNumber(Locale::Data& data, const Placeholder& placeholder, const FormatArgument* argument) {
    const bool isReal = placeholder.conversion == 'f';
    const auto& formatter = numberFormatter(data, placeholder);
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString text =
        isReal ? formatter.formatDouble(shownReal(realContent(argument)), status).toString(status)
               : formatter.formatDecimal(integerDigits(placeholder, argument), status).toString(status);
    if (!succeeded(status)) {
        return isReal ? plainReal(placeholder, argument) : plainInteger(placeholder, argument);
    }
    int32_t firstDigit = 0;
    while (firstDigit < text.length() && u_isdigit(text.char32At(firstDigit)) == 0) {
        firstDigit = text.moveIndex32(firstDigit, 1);
    }
    if (firstDigit == text.length()) {  // an infinity, or no number
        return {"", utf8FromUnicode(text), ""};
    }
    const UChar32 digit = text.char32At(firstDigit);
    const bool wantsBlank = firstDigit == 0 && placeholder.showsBlank && placeholder.conversion != 'u';
    return {wantsBlank ? " " : utf8FromUnicode(text.tempSubString(0, firstDigit)),
            utf8FromUnicode(text.tempSubString(firstDigit)),
            utf8FromUnicode(icu::UnicodeString(digit - u_charDigitValue(digit)))};
}

std::size_t characterCount(std::string_view utf8) {
    return static_cast<std::size_t>(std::count_if(
        utf8.begin(), utf8.end(), [](char byte) { return !U8_IS_TRAIL(static_cast<std::uint8_t>(byte)); }));
}

std::string filled(const Placeholder& placeholder, std::string text) {
    const std::size_t count = characterCount(text);
    const std::size_t missing = placeholder.width > count ? placeholder.width - count : 0;
    return text.insert(placeholder.isLeftAligned ? text.size() : 0, missing, ' ');
}

std::string filled(const Placeholder& placeholder, const NumberText& number) {
    std::string text = number.sign;
    if (placeholder.fillsWithZeros && !placeholder.isLeftAligned && !number.zero.empty()) {
        for (auto count = characterCount(text + number.digits); count < placeholder.width; ++count) {
            text += number.zero;
        }
    }
    return filled(placeholder, text + number.digits);
}

std::string textOfString(const Placeholder& placeholder, const FormatArgument* argument) {
    const auto* content = argument != nullptr ? std::get_if<std::string>(&argument->content()) : nullptr;
    std::string text = content != nullptr ? *content : "(null)";
    if (placeholder.precision) {
        std::size_t end = 0;
        for (int count = 0; count < *placeholder.precision && end < text.size(); ++count) {
            U8_FWD_1(text.data(), end, text.size());
        }
        text.resize(end);
    }
    return filled(placeholder, text);
}

std::string textOfArgument(Locale::Data* data, const Placeholder& placeholder, const FormatArgument* argument) {
    if (placeholder.conversion == '@') {
        return textOfString(placeholder, argument);
    }
    if (data != nullptr) {
        return filled(placeholder, localizedNumber(*data, placeholder, argument));
    }
    return filled(placeholder, placeholder.conversion == 'f' ? plainReal(placeholder, argument)
                                                             : plainInteger(placeholder, argument));
}

// Beyond it placeholders print nothing: a long format of wide ones could ask for any amount of memory.
constexpr std::size_t kMostBytes = std::size_t{1} << 20;

std::string formatted(Locale::Data* data, std::string_view format, std::span<const FormatArgument> arguments) {
    std::string text;
    std::size_t next = 0;
    for (std::size_t index = 0; index < format.size(); ++index) {
        const auto placeholder =
            format[index] == '%' ? placeholderAtStart(format.substr(index + 1)) : std::optional<Placeholder>();
        if (!placeholder) {
            text += format[index];
            continue;
        }
        index += placeholder->length;
        if (text.size() > kMostBytes) {
            continue;
        }
        if (placeholder->conversion == '%') {
            text += '%';
            continue;
        }
        // Position 0 wraps to one that no argument has.
        const std::size_t wanted = placeholder->position ? *placeholder->position - 1 : next++;
        text += textOfArgument(data, *placeholder, wanted < arguments.size() ? &arguments[wanted] : nullptr);
    }
    return text;
}

}  // namespace

std::string stringWithFormat(std::string_view format, std::initializer_list<FormatArgument> arguments) {
    return formatted(nullptr, format, arguments);
}

std::string localizedStringWithFormat(const Locale& locale, std::string_view format,
                                      std::initializer_list<FormatArgument> arguments) {
    return formatted(&locale.data(), format, arguments);
}

}  // namespace lunabrook
