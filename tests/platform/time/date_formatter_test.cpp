#include "platform/time/date_formatter.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/time/iso8601.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

const Date kEvening = test::date("2024-06-10T21:05:00+02:00");  // a Monday

DateFormatter formatter(const char* locale, const char* pattern, const char* zone = "Europe/Berlin") {
    DateFormatter made(Locale::named(locale).value(), TimeZone::named(zone).value());
    made.setDateFormat(pattern);
    return made;
}

struct Row {
    const char* locale;
    const char* given;  // pattern, text or template
    const char* expected;
};

std::string utc(std::optional<Date> date) {
    return date ? iso8601StringFromDate(*date, TimeZone::named("UTC").value()).value() : "nil";
}

TEST(Locale, KnowsLanguagesOfTheLocaleDataAlone) {
    EXPECT_EQ(Locale::named("de-DE").value().identifier(), "de_DE");
    EXPECT_EQ(Locale::named("ar_EG@numbers=latn").value().identifier(), "ar_EG@numbers=latn");
    EXPECT_EQ(Locale::named("en_XX").value().identifier(), "en_XX");
    for (const std::string_view name : {"", "xx_YY", "rubbish", "root", "und", "_DE", "../../etc"}) {
        EXPECT_FALSE(Locale::named(name)) << name;
    }
    EXPECT_FALSE(Locale::named(std::string_view("de\0x", 4)));
}

TEST(DateFormatter, WritesByPattern) {
    const Row rows[] = {
        {"th_TH", "yyyyMMdd", "25670610"},
        {"ar_EG", "yyyyMMdd", "\u0662\u0660\u0662\u0664\u0660\u0666\u0661\u0660"},
        {"ar_EG@numbers=latn", "yyyyMMdd", "20240610"},
        {"en_US", "h:mma", "9:05PM"},
        {"en_US", "yyyy-MM-dd'T'HH:mm:ssZ", "2024-06-10T21:05:00+0200"},
        {"en_US", "'Zone' HH", "Zone 21"},
        {"en_US", "", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(formatter(row.locale, row.given).stringFromDate(kEvening), row.expected)
            << row.locale << " " << row.given;
    }
    const DateFormatter exact = formatter("en_US", "HH:mm:ss.SSS");
    EXPECT_EQ(exact.stringFromDate(dateByAddingSeconds(kEvening, 0.2509)), "21:05:00.250");
    EXPECT_EQ(exact.stringFromDate(dateFromSecondsSince1970(-0.25)), "00:59:59.750");
    DateFormatter changing = formatter("en_US", "HH");
    changing.setDateFormat("YYYY");
    EXPECT_EQ(changing.stringFromDate(test::date("2025-12-29T12:00:00Z")), "2026");
    // The system's zone data know that summer time is gone there.
    const Date mexicanNoon = test::date("2026-07-01T18:00:00Z");
    EXPECT_EQ(formatter("en_US", "HH:mm", "America/Mexico_City").stringFromDate(mexicanNoon), "12:00");
}

TEST(DateFormatter, HasNoTextWithoutADate) {
    const DateFormatter day = formatter("en_US", "yyyyMMdd");
    EXPECT_EQ(day.stringFromDate(std::nullopt), std::nullopt);
    for (const double seconds : {std::numeric_limits<double>::quiet_NaN(), 1e14}) {
        EXPECT_EQ(day.stringFromDate(dateFromSecondsSince1970(seconds)), std::nullopt) << seconds;
    }
    EXPECT_EQ(day.stringFromDate(dateFromSecondsSince1970(-3600.5)), "19691231");
}

TEST(DateFormatter, ReadsDayKeysStrictly) {
    const Row rows[] = {
        {"en_US", "20240229", "2024-02-28T23:00:00Z"},
        {"en_US", " 20240229\t", "2024-02-28T23:00:00Z"},
        {"th_TH", "25670610", "2024-06-09T22:00:00Z"},
        {"ar_EG", "\u0662\u0660\u0662\u0664\u0660\u0666\u0661\u0660", "2024-06-09T22:00:00Z"},
        {"ar_EG", "20240610", "2024-06-09T22:00:00Z"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(utc(formatter(row.locale, "yyyyMMdd").dateFromString(row.given)), row.expected) << row.given;
    }
    for (const char* noKey : {"", "20240230", "20241301", "00000101", "2024-02-29", "2024 0229", "202402299", "2024229",
                              "20240229x", "+20240229"}) {
        EXPECT_EQ(formatter("en_US", "yyyyMMdd").dateFromString(noKey), std::nullopt) << noKey;
    }
    EXPECT_EQ(formatter("en_US", "").dateFromString(""), std::nullopt);
    // Two digits are a year from 1950 to 2049.
    EXPECT_EQ(utc(formatter("en_US", "yyMMdd", "UTC").dateFromString("491231")), "2049-12-31T00:00:00Z");
    EXPECT_EQ(utc(formatter("en_US", "yyMMdd", "UTC").dateFromString("500101")), "1950-01-01T00:00:00Z");
}

TEST(DateFormatter, ReadsTheMomentOfATextWithAnOffset) {
    const Row rows[] = {
        {"en_US", "2024-06-10T21:05:00+0200", "2024-06-10T19:05:00Z"},
        {"en_US", "2024-06-10T21:05:00-0330", "2024-06-11T00:35:00Z"},
        {"en_US", "2024-06-10T21:05:00Z", "2024-06-10T21:05:00Z"},
        {"en_US", "2024-06-10T21:05:00", "nil"},
        {"en_US", "2024-02-30T21:05:00+0200", "nil"},
        {"en_US", "2024-06-10T21:05:00+0200x", "nil"},
    };
    const DateFormatter timestamp = formatter("en_US", "yyyy-MM-dd'T'HH:mm:ssZ", "Asia/Tokyo");
    for (const Row& row : rows) {
        EXPECT_EQ(utc(timestamp.dateFromString(row.given)), row.expected) << row.given;
    }
    // A wall time that the clocks jumped over reads as if they had not jumped yet.
    EXPECT_EQ(utc(formatter("en_US", "yyyyMMdd HH:mm").dateFromString("20260329 02:30")), "2026-03-29T01:30:00Z");
}

TEST(DateFormatTemplate, GivesTheLocalesPattern) {
    const Row rows[] = {
        {"en_US", "j", "h\u202Fa"}, {"de_DE", "j", "HH 'Uhr'"}, {"en_US", "mah", "h:mm\u202Fa"},
        {"fi_FI", "HH:mm", "H.mm"}, {"en_US", "H:mm", "HH:mm"}, {"es_ES", "EEEE, MMMM d", "EEEE, d 'de' MMMM"},
    };
    for (const Row& row : rows) {
        const Locale locale = Locale::named(row.locale).value();
        EXPECT_EQ(dateFormatFromTemplate(row.given, locale), row.expected) << row.locale << " " << row.given;
    }
}

}  // namespace
}  // namespace lunabrook
