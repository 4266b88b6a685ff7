#include "platform/time/date_formatter.h"

#include <unicode/calendar.h>
#include <unicode/simpletz.h>
#include <unicode/smpdtfmt.h>
#include <unicode/uchar.h>

#include <cmath>

#include "platform/text/private/icu.h"

namespace lunabrook {

namespace {

// Outside quoted text.
bool hasZoneField(std::string_view pattern) {
    bool isQuoted = false;
    for (const char letter : pattern) {
        if (letter == '\'') {
            isQuoted = !isQuoted;
        } else if (!isQuoted && std::string_view("zZOvVXx").find(letter) != std::string_view::npos) {
            return true;
        }
    }
    return false;
}

// Without blanks around, and with the digits of every script as ASCII ones: a text in either is the same text.
icu::UnicodeString comparable(icu::UnicodeString text) {
    text.trim();
    icu::UnicodeString plain;
    for (int32_t index = 0; index < text.length(); index = text.moveIndex32(index, 1)) {
        const UChar32 character = text.char32At(index);
        plain.append(u_isdigit(character) ? UChar32{U'0'} + u_charDigitValue(character) : character);
    }
    return plain;
}

// A fraction of a millisecond is dropped toward the past.
double wholeMilliseconds(Date date) {
    const double seconds = std::floor(secondsSince1970(date));
    return seconds * kMillisecondsPerSecond + std::floor((secondsSince1970(date) - seconds) * kMillisecondsPerSecond);
}

}  // namespace

// ICU's zone stands at UTC: it is given wall times as if they were UTC, so that no second set of zone rules can
// disagree with the system's. Only a pattern with a zone field gets the moment and its offset.
struct DateFormatter::Machine {
    Locale locale;
    TimeZone timeZone;
    std::string pattern;
    bool patternHasZone = false;
    std::unique_ptr<icu::SimpleDateFormat> format;  // null before the first pattern, or when the locale data fail

    void make(const icu::UnicodeString& unicodePattern);
    // Milliseconds since 1970 of a wall time taken as UTC, or of a moment.
    std::optional<icu::UnicodeString> text(double milliseconds) const;
    std::optional<icu::UnicodeString> textInZone(double milliseconds, int secondsFromUtc) const;
    std::optional<double> parsed(icu::UnicodeString text) const;
};

void DateFormatter::Machine::make(const icu::UnicodeString& unicodePattern) {
    UErrorCode status = U_ZERO_ERROR;
    format = std::make_unique<icu::SimpleDateFormat>(unicodePattern, locale.data().locale, status);
    if (!succeeded(status)) {
        format.reset();
        return;
    }
    format->setLenient(false);
    format->adoptTimeZone(icu::TimeZone::getGMT()->clone());
    // Two-digit years are 1950 to 2049, whatever the real clock says.
    constexpr double kStartOf1950 = -631152000.0 * kMillisecondsPerSecond;
    format->set2DigitYearStart(kStartOf1950, status);
}

std::optional<icu::UnicodeString> DateFormatter::Machine::text(double milliseconds) const {
    icu::UnicodeString written;
    UErrorCode status = U_ZERO_ERROR;
    if (format) {
        format->format(milliseconds, written, nullptr, status);
    }
    return format && succeeded(status) ? std::optional(written) : std::nullopt;
}

std::optional<icu::UnicodeString> DateFormatter::Machine::textInZone(double milliseconds, int secondsFromUtc) const {
    if (!format) {
        return std::nullopt;
    }
    format->adoptTimeZone(new icu::SimpleTimeZone(secondsFromUtc * 1000, icu::UnicodeString()));
    auto written = text(milliseconds);
    format->adoptTimeZone(icu::TimeZone::getGMT()->clone());
    return written;
}

std::optional<double> DateFormatter::Machine::parsed(icu::UnicodeString given) const {
    given.trim();
    icu::ParsePosition position(0);
    const double milliseconds = format ? format->parse(given, position) : 0.0;
    if (!format || position.getErrorIndex() >= 0 || position.getIndex() == 0 || position.getIndex() != given.length()) {
        return std::nullopt;
    }
    if (patternHasZone) {
        return milliseconds;
    }
    // ICU takes more and fewer digits than the pattern writes; what the moment reads as settles it.
    const auto written = text(milliseconds);
    return written && comparable(*written) == comparable(given) ? std::optional(milliseconds) : std::nullopt;
}

DateFormatter::DateFormatter(Locale locale, TimeZone timeZone)
    : machine_(std::make_unique<Machine>(Machine{std::move(locale), std::move(timeZone), {}, false, nullptr})) {}
DateFormatter::DateFormatter(DateFormatter&&) noexcept = default;
DateFormatter& DateFormatter::operator=(DateFormatter&&) noexcept = default;
DateFormatter::~DateFormatter() = default;

void DateFormatter::setDateFormat(std::string_view pattern) {
    if (machine_->pattern == pattern) {
        return;
    }
    machine_->pattern = pattern;
    machine_->patternHasZone = hasZoneField(pattern);
    if (machine_->format) {
        machine_->format->applyPattern(unicodeFromUtf8(pattern));
    } else {
        machine_->make(unicodeFromUtf8(pattern));
    }
}

std::optional<std::string> DateFormatter::stringFromDate(std::optional<Date> date) const {
    if (!date || !machine_->timeZone.componentsFromDate(*date)) {
        return std::nullopt;
    }
    if (machine_->pattern.empty()) {
        return std::string();
    }
    const int offset = machine_->timeZone.secondsFromUtc(*date);
    const double moment = wholeMilliseconds(*date);
    const auto text = machine_->patternHasZone ? machine_->textInZone(moment, offset)
                                               : machine_->text(moment + offset * kMillisecondsPerSecond);
    return text ? std::optional(utf8FromUnicode(*text)) : std::nullopt;
}

std::optional<Date> DateFormatter::dateFromString(std::string_view text) const {
    const std::optional<double> parsed = machine_->parsed(unicodeFromUtf8(text));
    if (!parsed) {
        return std::nullopt;
    }
    const double seconds = std::floor(*parsed / kMillisecondsPerSecond);
    const double fraction = *parsed / kMillisecondsPerSecond - seconds;
    if (!machine_->patternHasZone) {
        const auto wall = machine_->timeZone.dateFromComponents({.second = static_cast<std::int64_t>(seconds)});
        return wall ? std::optional(dateByAddingSeconds(*wall, fraction)) : std::nullopt;
    }
    const Date moment = dateFromSecondsSince1970(seconds + fraction);
    return machine_->timeZone.componentsFromDate(moment) ? std::optional(moment) : std::nullopt;
}

std::string dateFormatFromTemplate(std::string_view fields, const Locale& locale) {
    Locale::Data& data = locale.data();
    if (const auto known = data.patternsOfTemplates.find(fields); known != data.patternsOfTemplates.end()) {
        return known->second;
    }
    UErrorCode status = U_ZERO_ERROR;
    if (!data.patternGenerator) {
        data.patternGenerator.reset(icu::DateTimePatternGenerator::createInstance(data.locale, status));
    }
    icu::UnicodeString pattern;
    if (succeeded(status) && data.patternGenerator) {
        const icu::UnicodeString skeleton =
            icu::DateTimePatternGenerator::staticGetSkeleton(unicodeFromUtf8(fields), status);
        pattern = data.patternGenerator->getBestPattern(skeleton, status);
    }
    // Without locale data the fields themselves are the best pattern there is.
    std::string best = succeeded(status) ? utf8FromUnicode(pattern) : std::string(fields);
    return data.patternsOfTemplates.emplace(fields, std::move(best)).first->second;
}

}  // namespace lunabrook
