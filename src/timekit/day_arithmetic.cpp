// Sleep days, clock times on a day, months and daylight-saving changes: the calendar work of FormatTools.

#include <algorithm>
#include <cmath>

#include "platform/device/user_defaults.h"
#include "platform/values/value.h"
#include "timekit/format_tools.h"

namespace lunabrook {

namespace {

constexpr std::int64_t kDefaultNightHour = 21;
constexpr std::int64_t kDayAnchorHour = 4;        // after the clocks have changed
constexpr std::int64_t kCountedBackHour = 3;      // of days and months that are counted back
constexpr double kShortMorningSeconds = 21240.0;  // 5 h 54 min
constexpr double kLongMorningSeconds = 21960.0;   // 6 h 6 min

// The extension's own setting, not the shared store's night hour of a similar name.
std::int64_t nightHourOf(const Device& device) {
    const auto stored = UserDefaults(device, "kestrovan.Lunabrook.intents").objectForKey("nightHour11");
    return stored ? stored->integerValue() : kDefaultNightHour;
}

std::optional<Date> dateAt(const Calendar& calendar, const std::optional<Date>& date, std::int64_t hour,
                           std::int64_t minute) {
    auto components = calendar.componentsFromDate(date);
    if (!components) {
        return std::nullopt;
    }
    components->hour = hour;
    components->minute = minute;
    components->second = 0;
    return calendar.dateFromComponents(*components);
}

// A moment on the day on which the current night began; nil for a negative night hour.
std::optional<Date> dayOfCurrentNight(Date now, std::int64_t hour, std::int64_t nightHour) {
    if (nightHour < 0) {
        return std::nullopt;
    }
    return hour < nightHour ? dateByAddingSeconds(now, -kDaySeconds) : now;
}

// The same for the night of another seed. Here a negative night hour has not struck yet, unlike for seed 0; that is
// meant. The span is single precision.
Date dayOfSeedsNight(Date now, std::int64_t hour, std::int64_t nightHour, std::int64_t seed) {
    const auto days = static_cast<double>(seed);
    const bool beforeNight = nightHour < 0 || hour < nightHour;
    const float span = beforeNight ? narrowed(1.0 - days) * -86400.0F : narrowed(days) * 86400.0F;
    return dateByAddingSeconds(now, span);
}

// `field` less `count`, kept within the type; so far away no calendar has a date.
std::int64_t countedBack(std::int64_t field, std::int64_t count) {
    constexpr std::int64_t kBeyondAnyDate = 1'000'000'000'000;
    return field - std::clamp(count, -kBeyondAnyDate, kBeyondAnyDate);
}

}  // namespace

const Calendar& FormatTools::cal() {
    if (!cal_) {
        cal_.emplace(device_.timeZone());
    }
    return *cal_;
}

std::optional<Date> FormatTools::nowDate() {
    const Date now = device_.now();
    const std::int64_t nightHour = nightHourOf(device_);
    const auto start = dateAt(cal(), dayOfCurrentNight(now, currentHour(now), nightHour), nightHour, 0);
    return start ? std::optional(dateByAddingSeconds(*start, kHalfDaySeconds)) : std::nullopt;
}

std::int64_t FormatTools::seedForDate(When date) {
    const auto day = dateForDate(date, kDayAnchorHour, 0);
    const auto today = dateForDate(nowDate(), kDayAnchorHour, 0);
    if (!day || !today) {
        return 0;
    }
    float daysAgo = narrowed(secondsFrom(*day, *today) / kDaySeconds);
    // Rounds a past 23-hour day up; a future one is only cut off, and its day is missed. That is meant.
    if (static_cast<double>(daysAgo - std::trunc(daysAgo)) > 0.1) {
        daysAgo += 1;
    }
    return truncated(-daysAgo);
}

std::optional<Date> FormatTools::fromDateForSeed(std::int64_t seed) {
    const std::int64_t nightHour = nightHourOf(device_);
    const Date now = device_.now();
    const std::int64_t hour = currentHour(now);
    const std::optional<Date> day =
        seed == 0 ? dayOfCurrentNight(now, hour, nightHour) : dayOfSeedsNight(now, hour, nightHour, seed);
    // A fresh calendar, not the kept one, on purpose.
    return dateAt(Calendar(device_.timeZone()), day, nightHour, 0);
}

std::optional<Date> FormatTools::startDateForDaysAgo(std::int64_t daysAgo, When basedOnDate) {
    auto components = cal().componentsFromDate(basedOnDate);
    if (!components) {
        return std::nullopt;
    }
    components->day = countedBack(components->day, daysAgo);
    components->hour = kCountedBackHour;
    components->minute = 0;
    components->second = 0;
    return cal().dateFromComponents(*components);
}

double FormatTools::epochIntervalForDate(When date, std::int64_t hour, std::int64_t min) {
    const auto built = dateForDate(date, hour, min);
    return built ? secondsSince1970(*built) : 0;
}

std::optional<Date> FormatTools::dateForDate(When date, std::int64_t hour, std::int64_t min) {
    return dateAt(cal(), date, hour, min);
}

std::optional<Date> FormatTools::dateForDate(When date, std::int64_t year, std::int64_t month, std::int64_t day,
                                             std::int64_t hour, std::int64_t min) {
    if (!cal().componentsFromDate(date)) {  // a missing date stays missing, though nothing of it is kept
        return std::nullopt;
    }
    return cal().dateFromComponents({year, month, day, hour, min, 0});
}

int FormatTools::isDaylightSavings(When date) {
    const auto midnight = dateForDate(date, 0, 0);
    const auto six = dateForDate(date, 6, 0);
    if (!midnight || !six) {
        return 0;
    }
    const double morning = secondsFrom(*midnight, *six);
    if (morning < kShortMorningSeconds) {
        return -1;
    }
    return morning > kLongMorningSeconds ? 1 : 0;
}

int FormatTools::getDaylightSavingsHourForDate(When date, std::int64_t mode) {
    const auto midnight = dateForDate(date, 0, 0);
    if (!midnight) {
        return 0;
    }
    const TimeZone& timeZone = device_.timeZone();
    const bool atMidnight = timeZone.isDaylightSavingTime(*midnight);
    for (int hour = 1; hour <= 5; ++hour) {  // hours that pass, not hours of the clock
        if (timeZone.isDaylightSavingTime(dateByAddingSeconds(*midnight, hour * kHourSeconds)) != atMidnight) {
            return mode == 1 ? hour - 1 : hour;
        }
    }
    return 0;
}

double FormatTools::intervalSinceMidnight(When date) {
    const auto midnight = dateForDate(date, 0, 0);
    return midnight ? secondsFrom(*midnight, *date) : 0;
}

std::optional<Date> FormatTools::getMidnight() { return dateForDate(device_.now(), 0, 0); }

std::int64_t FormatTools::getWeekdayNoForDate(When date) { return cal().weekdayFromDate(date).value_or(0); }

std::int64_t FormatTools::dayNoOfDate(When date) { return getWeekdayNoForDate(date); }

std::optional<Date> FormatTools::startOfMonthMonthsAgo(std::int64_t monthsAgo) {
    auto components = cal().componentsFromDate(device_.now());
    if (!components) {
        return std::nullopt;
    }
    const std::int64_t month = countedBack(components->month, monthsAgo);
    return cal().dateFromComponents({components->year, month, 1, kCountedBackHour, 0, 0});
}

FormatTools::Text FormatTools::nameOfMonthMonthsAgo(std::int64_t monthsAgo) {
    return shortMonth(startOfMonthMonthsAgo(monthsAgo));
}

}  // namespace lunabrook
