// The durations, the unit words and the how-long-ago phrase of FormatTools.

#include "platform/text/string_format.h"
#include "platform/text/text_case.h"
#include "platform/values/value.h"
#include "timekit/format_tools.h"

namespace lunabrook {

namespace {

using namespace calendar_unit;

constexpr double kMinuteSeconds = 60.0;
constexpr double kWeekSeconds = 7.0 * kDaySeconds;

struct Settings {
    int maximumUnitCount;
    UnitsStyle unitsStyle;
    std::optional<ZeroFormatting> zeroFormatting;  // missing: as the duration before left it
    unsigned allowedUnits;
};

constexpr Settings kTime = {2, UnitsStyle::abbreviated, ZeroFormatting::pad, kHour + kMinute};
constexpr Settings kLongTime = {2, UnitsStyle::full, ZeroFormatting::pad, kHour + kMinute};
constexpr Settings kMin = {1, UnitsStyle::abbreviated, ZeroFormatting::pad, kMinute};
constexpr Settings kShortTime = {2, UnitsStyle::positional, ZeroFormatting::standard, kHour + kMinute};
constexpr Settings kShortHMS = {3, UnitsStyle::positional, ZeroFormatting::pad, kHour + kMinute + kSecond};
constexpr Settings kLongMin = {1, UnitsStyle::shortened, ZeroFormatting::pad, kMinute};
// Leaves the zeros alone on purpose: 7 days are "1w" after one duration and "1w 0d" after another.
constexpr Settings kDays = {2, UnitsStyle::abbreviated, std::nullopt, kWeekOfMonth + kDay};

std::optional<std::string> durationText(DateComponentsFormatter& formatter, double seconds, const Settings& settings) {
    formatter.maximumUnitCount = settings.maximumUnitCount;
    formatter.unitsStyle = settings.unitsStyle;
    formatter.zeroFormattingBehavior = settings.zeroFormatting.value_or(formatter.zeroFormattingBehavior);
    formatter.allowedUnits = settings.allowedUnits;
    return formatter.stringFromTimeInterval(seconds);
}

// What is left of a short text such as "2 hr" without its digit and plain blanks; a no-break blank stays.
std::optional<std::string> unitWord(DateComponentsFormatter& formatter, double seconds, std::string_view digit,
                                    unsigned unit) {
    const auto text = durationText(formatter, seconds, {1, UnitsStyle::shortened, ZeroFormatting::pad, unit});
    if (!text) {
        return std::nullopt;
    }
    return stringByReplacing(stringByReplacing(*text, digit, ""), " ", "");
}

// Every phrase ends in a blank. Weeks are said from two on, so 7 to 13 days are days; that is meant.
std::string agoPhrase(double secondsAgo, float days, float weeks) {
    if (weeks >= 2) {
        return stringWithFormat("%ld weeks ", {truncated(weeks)});
    }
    if (days >= 1) {
        const std::int64_t count = truncated(days);
        return count == 1 ? "a day " : stringWithFormat("%ld days ", {count});
    }
    if (secondsAgo > kHourSeconds) {
        const double hours = secondsAgo / kHourSeconds;
        return hours >= 2 ? stringWithFormat("%ld hours ", {truncated(hours)}) : "an hour ";
    }
    const double minutes = secondsAgo / kMinuteSeconds;
    return minutes >= 2 ? stringWithFormat("%ld minutes ", {truncated(minutes)}) : "a minute ";
}

}  // namespace

DateComponentsFormatter& FormatTools::dateComponentsFormatter() {
    if (!dateComponentsFormatter_) {
        dateComponentsFormatter_.emplace(device_.locale());
    }
    return *dateComponentsFormatter_;
}

FormatTools::Text FormatTools::formattedTimeInterval(double seconds) {
    return durationText(dateComponentsFormatter(), seconds, kTime);
}

FormatTools::Text FormatTools::formattedLongTimeInterval(double seconds) {
    return durationText(dateComponentsFormatter(), seconds, kLongTime);
}

FormatTools::Text FormatTools::formattedMinInterval(double seconds) {
    return durationText(dateComponentsFormatter(), seconds, kMin);
}

FormatTools::Text FormatTools::formattedShortTimeInterval(double seconds) {
    return durationText(dateComponentsFormatter(), seconds, kShortTime);
}

FormatTools::Text FormatTools::formattedShortHMSInterval(double seconds) {
    return durationText(dateComponentsFormatter(), seconds, kShortHMS);
}

FormatTools::Text FormatTools::formattedLongMinInterval(double seconds) {
    return durationText(dateComponentsFormatter(), seconds, kLongMin);
}

FormatTools::Text FormatTools::formattedDaysInterval(double seconds) {
    return durationText(dateComponentsFormatter(), seconds, kDays);
}

// A second or two past the whole unit; the count decides the word's form: one minute, two hours, two days.
FormatTools::Text FormatTools::shortTermForMIN() { return unitWord(dateComponentsFormatter(), 61, "1", kMinute); }

FormatTools::Text FormatTools::shortTermForHRS() { return unitWord(dateComponentsFormatter(), 7202, "2", kHour); }

FormatTools::Text FormatTools::shortTermForDAYS() { return unitWord(dateComponentsFormatter(), 172802, "2", kDay); }

FormatTools::Text FormatTools::whenString(When date) {
    const double secondsAgo = date ? secondsFrom(*date, device_.now()) : 0;
    if (!(secondsAgo >= kMinuteSeconds)) {  // not a number counts as now
        return "just now";
    }
    const float days = secondsAgo > kDaySeconds ? narrowed(secondsAgo / kDaySeconds) : 0;
    const float weeks = secondsAgo > kWeekSeconds ? narrowed(secondsAgo / kWeekSeconds) : 0;
    if (weeks > 4) {
        return adapted(date, "h:mma E MMM d yyyy");
    }
    return agoPhrase(secondsAgo, days, weeks) + "ago";
}

FormatTools::Text FormatTools::whenStringFB(std::string_view timestamp) {
    if (!inputFormatter_) {
        inputFormatter_.emplace(device_.locale(), device_.timeZone());
    }
    inputFormatter_->setDateFormat("yyyy-MM-dd'T'HH:mm:ssZ");
    return whenString(inputFormatter_->dateFromString(timestamp));
}

}  // namespace lunabrook
