// Dates as text and back by pattern: "yyyyMMdd" gives 20240610.
//
// Patterns are those of Unicode's locale data. Texts take the locale's own calendar and digits: in th_TH the year of
// the day key is 2567. Building one, and setting another pattern, is slow (locale data); formatting is cheap.

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/text/locale.h"
#include "platform/time/time_zone.h"
#include "platform/values/date.h"

namespace lunabrook {

class DateFormatter {
public:
    DateFormatter(Locale locale, TimeZone timeZone);
    DateFormatter(DateFormatter&&) noexcept;
    DateFormatter& operator=(DateFormatter&&) noexcept;
    ~DateFormatter();

    // Stays until the next one is set. Empty at first: every date is then the empty text.
    void setDateFormat(std::string_view pattern);

    // Nil when the date is missing or not finite.
    std::optional<std::string> stringFromDate(std::optional<Date> date) const;

    // Strict: the whole text, blanks around allowed, must be what the pattern writes (digits of any script), and name
    // a day that exists. A pattern with a zone field takes the moment from the text's own offset (+0200, +02:00, Z).
    std::optional<Date> dateFromString(std::string_view text) const;

private:
    struct Machine;
    std::unique_ptr<Machine> machine_;
};

// The locale's own pattern with the fields of `fields`, whose order and punctuation do not matter:
// "h:mma" gives "h:mm\u202Fa" in en_US, "HH:mm" in de_DE. "j" asks for the hour in the locale's clock.
std::string dateFormatFromTemplate(std::string_view fields, const Locale& locale);

}  // namespace lunabrook
