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

#include "platform/device/device.h"
#include "platform/time/calendar.h"
#include "platform/time/date_components_formatter.h"
#include "platform/time/date_formatter.h"

namespace lunabrook {

class FormatTools {
public:
    using Text = std::optional<std::string>;
    using When = const std::optional<Date>&;
    // From the start of a sleep day to the morning whose calendar day it is filed under.
    static constexpr double kHalfDaySeconds = 43200.0;

    explicit FormatTools(const Device& device) : device_(device) {}

    // The display operations, one for each row of display_patterns.def.
#define DISPLAY_PATTERN(name, ...) Text name(When date);
#include "timekit/display_patterns.def"
#undef DISPLAY_PATTERN

    // Whether the locale's own hour has no day period (AM/PM).
    bool is24hr() const;

    // Numbers that the formatted text starts with; 0 for a missing date.
    std::int64_t currentDay(When date);
    std::int64_t currentHour(When date);
    std::int64_t currentMin(When date);
    std::int64_t currentYear();

    // Strict: eight digits that name a day in the locale's calendar.
    std::optional<Date> NSDateFromYYMMDD(std::string_view dayKey);
    Text shortDayMonthYear(When date);  // "Mon Jun 10, 2024"; the Korean form where the first language has "ko" in it
    Text veryShortDayOnly(When date);   // "M"
    Text isoDateFromDate(When date);    // "2024-06-10T21:05:00+02:00"
    std::string sentenceCapitalizedString(std::string_view text) const;  // "mONDAY nIGHT" -> "Monday night"

    // Durations in seconds; nil when not finite.
    Text formattedTimeInterval(double seconds);       // "7h 5m"
    Text formattedLongTimeInterval(double seconds);   // "7 hours, 5 minutes"
    Text formattedMinInterval(double seconds);        // "90m"
    Text formattedShortTimeInterval(double seconds);  // "7:05"
    Text formattedShortHMSInterval(double seconds);   // "01:01:05"
    Text formattedLongMinInterval(double seconds);    // "90 min"
    Text formattedDaysInterval(double seconds);       // "1w 1d"; zeros as the duration before left them
    Text shortTermForMIN();                           // "min"
    Text shortTermForHRS();                           // "hr"
    Text shortTermForDAYS();                          // "days"

    // "3 hours ago"; "just now" for a missing date, the date itself from more than four weeks ago. FB takes a timestamp
    // such as "2024-06-10T21:05:00+0200".
    Text whenString(When date);
    Text whenStringFB(std::string_view timestamp);

    // Day arithmetic. A day seed is 0 for the current sleep day, -1 for the one before. Clock fields roll over; a
    // result that no calendar reaches is nil, or 0 as a number.
    std::optional<Date> nowDate();  // 12 hours after the night hour that began the sleep day; nil when that is negative
    std::int64_t seedForDate(When date);
    std::optional<Date> fromDateForSeed(std::int64_t seed);
    std::optional<Date> startDateForDaysAgo(std::int64_t daysAgo, When basedOnDate);
    double epochIntervalForDate(When date, std::int64_t hour, std::int64_t min);  // seconds since 1970
    std::optional<Date> dateForDate(When date, std::int64_t hour, std::int64_t min);
    std::optional<Date> dateForDate(When date, std::int64_t year, std::int64_t month, std::int64_t day,
                                    std::int64_t hour, std::int64_t min);
    int isDaylightSavings(When date);  // -1: an hour is skipped before six o'clock, 1: one is repeated, 0: neither
    int getDaylightSavingsHourForDate(When date, std::int64_t mode);
    double intervalSinceMidnight(When date);
    std::optional<Date> getMidnight();
    std::int64_t getWeekdayNoForDate(When date);  // 1 is Sunday, 7 is Saturday
    std::int64_t dayNoOfDate(When date);          // the weekday too, on purpose
    std::optional<Date> startOfMonthMonthsAgo(std::int64_t monthsAgo);
    Text nameOfMonthMonthsAgo(std::int64_t monthsAgo);

private:
    // How a row of the table sets its pattern.
    Text fixed(When date, std::string_view pattern);
    Text adapted(When date, std::string_view pattern, std::string_view pattern24 = {});

    DateFormatter& outputFormatterWith(std::string_view pattern);
    DateFormatter& HHFormatterWith(std::string_view pattern);
    DateComponentsFormatter& dateComponentsFormatter();
    const Calendar& cal();

    const Device& device_;
    std::optional<DateFormatter> inputFormatter_;
    std::optional<DateFormatter> outputFormatter_;
    std::optional<DateFormatter> HHFormatter_;
    std::optional<DateComponentsFormatter> dateComponentsFormatter_;
    std::optional<Calendar> cal_;
};

}  // namespace lunabrook
