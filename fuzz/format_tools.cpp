// Random dates, zones (of the system and of random data), locales and languages through every operation of FormatTools.

#include <cmath>

#include "fuzz.h"
#include "timekit/format_tools.h"

namespace lunabrook {
namespace {

using fuzz::require;

// A date of four digits of year has every text; a missing one has none.
void writeEveryText(FormatTools& tools, FormatTools::When date) {
    const bool hasTexts = date && isOfFourDigitYear(*date);
#define DISPLAY_PATTERN(name, ...)                                               \
    {                                                                            \
        const auto text = tools.name(date);                                      \
        require(!hasTexts || (text && !text->empty()), "a date has every text"); \
        require(date || !text, "a missing date has no text");                    \
    }
#include "timekit/display_patterns.def"
#undef DISPLAY_PATTERN
    tools.shortDayMonthYear(date);
    tools.veryShortDayOnly(date);
    tools.isoDateFromDate(date);
    tools.whenString(date);
    tools.currentDay(date);
    tools.currentHour(date);
    tools.currentMin(date);
    tools.currentYear();
}

void writeDurations(FormatTools& tools, double seconds) {
    for (auto operation : {&FormatTools::formattedTimeInterval, &FormatTools::formattedLongTimeInterval,
                           &FormatTools::formattedMinInterval, &FormatTools::formattedShortTimeInterval,
                           &FormatTools::formattedShortHMSInterval, &FormatTools::formattedLongMinInterval,
                           &FormatTools::formattedDaysInterval}) {
        require((tools.*operation)(seconds).has_value() == std::isfinite(seconds), "a finite duration has its text");
    }
}

void calculate(FormatTools& tools, FormatTools::When date, FuzzedDataProvider& input) {
    const auto number = [&input] {
        return input.ConsumeBool() ? input.ConsumeIntegralInRange<std::int64_t>(-400, 3000)
                                   : input.ConsumeIntegral<std::int64_t>();
    };
    tools.seedForDate(date);
    tools.fromDateForSeed(number());
    tools.startDateForDaysAgo(number(), date);
    tools.epochIntervalForDate(date, number(), number());
    tools.dateForDate(date, number(), number());
    tools.dateForDate(date, number(), number(), number(), number(), number());
    const int change = tools.isDaylightSavings(date);
    require(change >= -1 && change <= 1, "a change of the clocks is one of three");
    tools.getDaylightSavingsHourForDate(date, number());
    tools.intervalSinceMidnight(date);
    tools.getWeekdayNoForDate(date);
    tools.dayNoOfDate(date);
    tools.startOfMonthMonthsAgo(number());
    tools.nameOfMonthMonthsAgo(number());
}

void test(std::string_view bytes) {
    FuzzedDataProvider input(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    const Date now = fuzz::anyDate(input);
    const std::optional<Date> date =
        input.ConsumeProbability<float>() < 0.95F ? std::optional(fuzz::anyDate(input)) : std::nullopt;
    const double seconds =
        input.ConsumeBool() ? input.ConsumeFloatingPointInRange(-1e6, 1e6) : input.ConsumeFloatingPoint<double>();
    const Locale& locale = fuzz::anyLocale(input);
    const Device device({.clock = [now] { return now; },
                         .timeZone = fuzz::anyZone(input),
                         .locale = locale,
                         .preferredLanguages = {input.ConsumeRandomLengthString(8)},
                         .bundle = {},
                         .preferences = {}});
    FormatTools tools(device);
    writeEveryText(tools, date);
    writeDurations(tools, seconds);
    calculate(tools, date, input);
    tools.is24hr();
    tools.nowDate();
    tools.getMidnight();
    tools.shortTermForMIN();
    tools.shortTermForHRS();
    tools.shortTermForDAYS();
    tools.sentenceCapitalizedString(input.ConsumeRandomLengthString(32));
    tools.whenStringFB(input.ConsumeRandomLengthString(32));
    const std::string key = input.ConsumeRandomLengthString(16);
    if (const auto day = tools.NSDateFromYYMMDD(key)) {
        require(tools.YYMMDD(day).has_value(), "a day that is read can be written");
    }
    if (const auto text = tools.YYMMDD(date); text && date && isOfFourDigitYear(*date)) {
        const auto day = tools.NSDateFromYYMMDD(*text);
        require(!day || tools.YYMMDD(day) == text, "a day key that is read is the day that was written");
    }
}

}  // namespace
}  // namespace lunabrook

LUNABROOK_FUZZ_TARGET(lunabrook::test)
