#include "platform/time/date_components_formatter.h"

#include <unicode/measfmt.h>
#include <unicode/measunit.h>
#include <unicode/measure.h>
#include <unicode/uchar.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "platform/text/private/icu.h"
#include "platform/values/value.h"

namespace lunabrook {

namespace {

struct UnitRule {
    unsigned unit;
    std::int64_t seconds;
    icu::MeasureUnit (*measure)();
};
constexpr std::array<UnitRule, 5> kUnitRules = {{
    {calendar_unit::kWeekOfMonth, 604800, icu::MeasureUnit::getWeek},
    {calendar_unit::kDay, 86400, icu::MeasureUnit::getDay},
    {calendar_unit::kHour, 3600, icu::MeasureUnit::getHour},
    {calendar_unit::kMinute, 60, icu::MeasureUnit::getMinute},
    {calendar_unit::kSecond, 1, icu::MeasureUnit::getSecond},
}};

struct Amount {
    const UnitRule* rule;
    std::int64_t count;
    bool isNegative = false;
};

std::vector<Amount> amountsOf(double interval, unsigned allowedUnits) {
    std::vector<Amount> amounts;
    std::int64_t seconds = truncated(std::fabs(interval));
    for (const UnitRule& rule : kUnitRules) {
        if ((allowedUnits & rule.unit) != 0) {
            amounts.push_back({&rule, seconds / rule.seconds});
            seconds %= rule.seconds;
        }
    }
    return amounts;
}

// Something is always left: when all are zero, the smallest unit.
void dropZeros(std::vector<Amount>& amounts, bool onlyLeading) {
    const Amount smallest = amounts.back();
    bool isLeading = true;
    std::erase_if(amounts, [&](const Amount& amount) {
        isLeading = isLeading && amount.count == 0;
        return onlyLeading ? isLeading : amount.count == 0;
    });
    if (amounts.empty()) {
        amounts.push_back(smallest);
    }
}

// Nil when the locale data fail. Zero may carry a minus sign.
std::optional<icu::UnicodeString> numberText(const Locale::Data::NumberFormatter& formatter, const Amount& amount) {
    UErrorCode status = U_ZERO_ERROR;
    const auto formatted = amount.isNegative && amount.count == 0
                               ? formatter.formatDouble(-0.0, status)
                               : formatter.formatInt(amount.isNegative ? -amount.count : amount.count, status);
    icu::UnicodeString text = formatted.toString(status);
    return succeeded(status) ? std::optional(std::move(text)) : std::nullopt;
}

const Locale::Data::NumberFormatter& clockFormatter(Locale::Data& data, int leastDigits) {
    const auto known = data.clockFormatters.find(leastDigits);
    if (known != data.clockFormatters.end()) {
        return known->second;
    }
    auto formatter =
        numbersOf(data).grouping(UNUM_GROUPING_OFF).integerWidth(icu::number::IntegerWidth::zeroFillTo(leastDigits));
    return data.clockFormatters.emplace(leastDigits, std::move(formatter)).first->second;
}

// What stands between the numbers of a clock-like duration, taken from one that is written out: 1:02:03.
const Locale::Data::ClockSeparators& clockSeparators(Locale::Data& data) {
    if (data.clockSeparators) {
        return *data.clockSeparators;
    }
    UErrorCode status = U_ZERO_ERROR;
    const icu::MeasureFormat format(data.locale, UMEASFMT_WIDTH_NUMERIC, status);
    const std::array<icu::Measure, 3> measures = {
        icu::Measure(1, new icu::MeasureUnit(icu::MeasureUnit::getHour()), status),
        icu::Measure(2, new icu::MeasureUnit(icu::MeasureUnit::getMinute()), status),
        icu::Measure(3, new icu::MeasureUnit(icu::MeasureUnit::getSecond()), status)};
    icu::UnicodeString example;
    icu::FieldPosition ignored;
    if (succeeded(status)) {
        format.formatMeasures(measures.data(), static_cast<int32_t>(measures.size()), example, ignored, status);
    }
    std::vector<icu::UnicodeString> between = {u""};
    for (int32_t index = 0; index < example.length(); index = example.moveIndex32(index, 1)) {
        const UChar32 character = example.char32At(index);
        if (u_isdigit(character) == 0) {
            between.back().append(character);
        } else if (!between.back().isEmpty()) {
            between.emplace_back();
        }
    }
    // Two separators and the emptiness after the seconds; in anything else there is no clock to be seen.
    const bool isClock = succeeded(status) && between.size() == 3;
    data.clockSeparators =
        isClock ? Locale::Data::ClockSeparators{between[0], between[1]} : Locale::Data::ClockSeparators{u":", u":"};
    return *data.clockSeparators;
}

std::optional<icu::UnicodeString> clockText(Locale::Data& data, const std::vector<Amount>& amounts, bool pads) {
    icu::UnicodeString text;
    for (const Amount& amount : amounts) {
        const bool isFirst = &amount == &amounts.front();
        if (!isFirst) {
            const auto& separators = clockSeparators(data);
            const bool followsHour = (&amount - 1)->rule->unit == calendar_unit::kHour;
            text.append(followsHour ? separators.afterHour : separators.afterMinute);
        }
        const auto number = numberText(clockFormatter(data, isFirst && !pads ? 1 : 2), amount);
        if (!number) {
            return std::nullopt;
        }
        text.append(*number);
    }
    return text;
}

const Locale::Data::NumberFormatter& unitFormatter(Locale::Data& data, UnitsStyle style, const UnitRule& rule) {
    const std::pair key(static_cast<int>(style), rule.unit);
    const auto known = data.unitFormatters.find(key);
    if (known != data.unitFormatters.end()) {
        return known->second;
    }
    const UNumberUnitWidth width = style == UnitsStyle::full        ? UNUM_UNIT_WIDTH_FULL_NAME
                                   : style == UnitsStyle::shortened ? UNUM_UNIT_WIDTH_SHORT
                                                                    : UNUM_UNIT_WIDTH_NARROW;
    auto formatter = numbersOf(data).unit(rule.measure()).unitWidth(width);
    return data.unitFormatters.emplace(key, std::move(formatter)).first->second;
}

std::optional<icu::UnicodeString> joined(Locale::Data& data, UnitsStyle style,
                                         const std::vector<icu::UnicodeString>& texts) {
    if (texts.size() == 1) {
        return texts.front();
    }
    UErrorCode status = U_ZERO_ERROR;
    auto& list = data.unitLists[static_cast<int>(style)];
    if (!list) {
        const UListFormatterWidth width = style == UnitsStyle::full        ? ULISTFMT_WIDTH_WIDE
                                          : style == UnitsStyle::shortened ? ULISTFMT_WIDTH_SHORT
                                                                           : ULISTFMT_WIDTH_NARROW;
        list.reset(icu::ListFormatter::createInstance(data.locale, ULISTFMT_TYPE_UNITS, width, status));
    }
    icu::UnicodeString text;
    if (succeeded(status) && list) {
        list->format(texts.data(), static_cast<int32_t>(texts.size()), text, status);
    }
    return succeeded(status) && list ? std::optional(text) : std::nullopt;
}

std::optional<icu::UnicodeString> wordedText(Locale::Data& data, UnitsStyle style, const std::vector<Amount>& amounts) {
    std::vector<icu::UnicodeString> texts;
    for (const Amount& amount : amounts) {
        const auto text = numberText(unitFormatter(data, style, *amount.rule), amount);
        if (!text) {
            return std::nullopt;
        }
        texts.push_back(*text);
    }
    return joined(data, style, texts);
}

}  // namespace

DateComponentsFormatter::DateComponentsFormatter(Locale locale) : locale_(std::move(locale)) {}

std::optional<std::string> DateComponentsFormatter::stringFromTimeInterval(double interval) const {
    std::vector<Amount> amounts = amountsOf(interval, allowedUnits);
    if (!std::isfinite(interval) || amounts.empty()) {
        return std::nullopt;
    }
    // No clock shows days: they are worded.
    const bool hasDays = (allowedUnits & (calendar_unit::kWeekOfMonth | calendar_unit::kDay)) != 0;
    const bool isClock = unitsStyle == UnitsStyle::positional && !hasDays;
    const bool pads = zeroFormattingBehavior == ZeroFormatting::pad;
    if (!pads) {
        dropZeros(amounts, isClock);
    }
    if (maximumUnitCount > 0 && amounts.size() > static_cast<std::size_t>(maximumUnitCount)) {
        amounts.erase(amounts.begin() + maximumUnitCount, amounts.end());
    }
    amounts.front().isNegative = interval < 0;
    const auto text =
        isClock ? clockText(locale_.data(), amounts, pads) : wordedText(locale_.data(), unitsStyle, amounts);
    return text ? std::optional(utf8FromUnicode(*text)) : std::nullopt;
}

}  // namespace lunabrook
