// The date and time toolkit: every pattern, clock time, duration, day key and day calculation of the system.
//
// Model: an operation is a request; a missing date gives a missing text, or 0 for the integer readers. Each owner holds
// an instance of its own; formatters are made on first use and kept, because building one is slow.
//   formatTools.YYMMDD(date) -> "20240610"      formatTools.formattedTimeInterval(25500) -> "7h 5m"

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/calendar.h"
#include "platform/date_components_formatter.h"
#include "platform/date_formatter.h"
#include "platform/device.h"

namespace lunabrook {

class FormatTools {
public:
    using Text = std::optional<std::string>;
    using When = const std::optional<Date>&;

    explicit FormatTools(const Device& device) : device_(device) {}

    // The display operations, one for each row of display_patterns.def.
#define DISPLAY_PATTERN(name, how, pattern, pattern24) Text name(When date);
#include "timekit/display_patterns.def"
#undef DISPLAY_PATTERN

    bool is24hr() const;
    std::int64_t currentDay(When date);
    std::int64_t currentHour(When date);
    std::int64_t currentMin(When date);
    std::int64_t currentYear();
    // Strict: eight digits that name a day in the locale's calendar.
    std::optional<Date> NSDateFromYYMMDD(std::string_view dayKey);
    Text shortDayMonthYear(When date);
    Text veryShortDayOnly(When date);
    Text isoDateFromDate(When date);
    std::string sentenceCapitalizedString(std::string_view text) const;

    // Durations (seconds; nil when not finite), unit words and the relative phrase.
    Text formattedTimeInterval(double seconds);       // "7h 5m"
    Text formattedLongTimeInterval(double seconds);   // "7 hours, 5 minutes"
    Text formattedMinInterval(double seconds);        // "90m"
    Text formattedShortTimeInterval(double seconds);  // "7:05"
    Text formattedShortHMSInterval(double seconds);   // "01:01:05"
    Text formattedLongMinInterval(double seconds);    // "90 min"
    Text formattedDaysInterval(double seconds);       // "1w 1d"
    Text shortTermForMIN();                           // "min"
    Text shortTermForHRS();                           // "hr"
    Text shortTermForDAYS();                          // "days"
    Text whenString(When date);                       // "3 hours ago"
    Text whenStringFB(std::string_view timestamp);

    // Day arithmetic. A day seed is 0 for the current sleep day, -1 for the one before.
    std::optional<Date> nowDate();
    std::int64_t seedForDate(When date);
    std::optional<Date> fromDateForSeed(std::int64_t seed);
    std::optional<Date> startDateForDaysAgo(std::int64_t daysAgo, When basedOnDate);
    double epochIntervalForDate(When date, std::int64_t hour, std::int64_t min);
    std::optional<Date> dateForDate(When date, std::int64_t hour, std::int64_t min);
    std::optional<Date> dateForDate(When date, std::int64_t year, std::int64_t month, std::int64_t day,
                                    std::int64_t hour, std::int64_t min);
    int isDaylightSavings(When date);
    int getDaylightSavingsHourForDate(When date, std::int64_t mode);
    double intervalSinceMidnight(When date);
    std::optional<Date> getMidnight();
    std::int64_t getWeekdayNoForDate(When date);
    std::int64_t dayNoOfDate(When date);
    std::optional<Date> startOfMonthMonthsAgo(std::int64_t monthsAgo);
    Text nameOfMonthMonthsAgo(std::int64_t monthsAgo);

private:
    const Device& device_;
    std::optional<DateFormatter> inputFormatter_;
    std::optional<DateFormatter> outputFormatter_;
    std::optional<DateFormatter> HHFormatter_;
    std::optional<DateComponentsFormatter> dateComponentsFormatter_;
    std::optional<Calendar> cal_;
};

}  // namespace lunabrook
