#include "timekit/format_tools.h"

#include "platform/text/text_case.h"
#include "platform/time/iso8601.h"
#include "platform/values/value.h"

namespace lunabrook {

namespace {

std::int64_t integerFrom(const std::optional<std::string>& text) { return text ? Value(*text).integerValue() : 0; }

}  // namespace

#define DISPLAY_PATTERN(name, use, ...) \
    FormatTools::Text FormatTools::name(When date) { return use(date, __VA_ARGS__); }
#include "timekit/display_patterns.def"
#undef DISPLAY_PATTERN

FormatTools::Text FormatTools::fixed(When date, std::string_view pattern) {
    return outputFormatterWith(pattern).stringFromDate(date);
}

FormatTools::Text FormatTools::adapted(When date, std::string_view pattern, std::string_view pattern24) {
    const bool asks24 = !pattern24.empty() && is24hr();
    return fixed(date, dateFormatFromTemplate(asks24 ? pattern24 : pattern, device_.locale()));
}

// The formatter is shared, so every operation sets its own pattern before it formats.
DateFormatter& FormatTools::outputFormatterWith(std::string_view pattern) {
    if (!outputFormatter_) {
        outputFormatter_.emplace(device_.locale(), device_.timeZone());
    }
    outputFormatter_->setDateFormat(pattern);
    return *outputFormatter_;
}

DateFormatter& FormatTools::HHFormatterWith(std::string_view pattern) {
    if (!HHFormatter_) {
        HHFormatter_.emplace(Locale::named("en_US_POSIX").value_or(device_.locale()), device_.timeZone());
    }
    HHFormatter_->setDateFormat(pattern);
    return *HHFormatter_;
}

bool FormatTools::is24hr() const {
    return dateFormatFromTemplate("j", device_.locale()).find('a') == std::string::npos;
}

std::int64_t FormatTools::currentDay(When date) { return integerFrom(HHFormatterWith("dd").stringFromDate(date)); }

// What "HH" would write there, without loading a second locale in every request. A day is not as simple: before 1582
// the formatter counts in another calendar.
std::int64_t FormatTools::currentHour(When date) {
    const auto components = cal().componentsFromDate(date);
    return components ? components->hour : 0;
}

// Minute and year are read from the user's locale and calendar, unlike day and hour; that is meant.
std::int64_t FormatTools::currentMin(When date) { return integerFrom(fixed(date, "mm")); }

std::int64_t FormatTools::currentYear() { return integerFrom(fixed(device_.now(), "yyyy")); }

std::optional<Date> FormatTools::NSDateFromYYMMDD(std::string_view dayKey) {
    return outputFormatterWith("yyyyMMdd").dateFromString(dayKey);
}

FormatTools::Text FormatTools::shortDayMonthYear(When date) {
    const auto& languages = device_.preferredLanguages();
    // "ko" anywhere in the first language ("kok" too), and the year of the week: both are meant.
    const bool korean = !languages.empty() && languages.front().find("ko") != std::string::npos;
    return fixed(date, korean ? "YYYY년 M월 d일 E요일" : "EEE MMM d, YYYY");
}

FormatTools::Text FormatTools::veryShortDayOnly(When date) {
    const Text day = fixed(date, "E");
    return day ? Text(uppercaseString(splitAfterFirstCharacter(*day).first)) : std::nullopt;
}

FormatTools::Text FormatTools::isoDateFromDate(When date) {
    return date ? iso8601StringFromDate(*date, device_.timeZone()) : std::nullopt;
}

std::string FormatTools::sentenceCapitalizedString(std::string_view text) const {
    const SplitText split = splitAfterFirstCharacter(text);
    return uppercaseString(split.first) + lowercaseString(split.rest);
}

}  // namespace lunabrook
