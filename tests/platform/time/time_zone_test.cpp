#include "platform/time/time_zone.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <limits>

#include "platform/time/calendar.h"
#include "platform/time/iso8601.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

TimeZone zone(const char* name) { return TimeZone::named(name).value(); }

std::string utc(std::optional<Date> date) {
    return date ? iso8601StringFromDate(*date, TimeZone::utc()).value() : "nil";
}

TEST(TimeZone, KnowsTheZonesOfItsFolderAndNoOthers) {
    for (const char* name : {"", "Europe", "Europe/Bern", "../../../etc/passwd", "/etc/passwd", "/dev/zero"}) {
        EXPECT_FALSE(TimeZone::named(name)) << name;
    }
    const test::TemporaryFolder folder;
    std::filesystem::copy_file("/usr/share/zoneinfo/Asia/Tokyo", folder.path() / "Home");
    EXPECT_TRUE(TimeZone::named("Home", folder.path()));
    EXPECT_FALSE(TimeZone::named("Europe/Berlin", folder.path()));
    EXPECT_TRUE(TimeZone::named("UTC", folder.path()));
    const std::string pipe = folder.path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(TimeZone::named(pipe)) << "and it was not waited for";
}

// Once a file that changed was never read again, since loaded zones are kept for the life of the process.
TEST(TimeZone, SeesThatAFileChanged) {
    const test::TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "localtime";
    const Date noon = test::date("2026-06-10T12:00:00Z");
    const std::filesystem::path zoneData = "/usr/share/zoneinfo";
    EXPECT_FALSE(TimeZone::named(file.string()));
    for (const auto& [name, seconds] : {std::pair("Europe/Berlin", 7200), {"Asia/Tokyo", 32400}}) {
        std::filesystem::copy_file(zoneData / name, file, std::filesystem::copy_options::overwrite_existing);
        EXPECT_EQ(zone(file.c_str()).secondsFromUtc(noon), seconds) << name;
    }
    const TimeZone tokyo = zone(file.c_str());
    std::filesystem::copy_file(zoneData / "Asia/Tokyo", file, std::filesystem::copy_options::overwrite_existing);
    EXPECT_EQ(zone(file.c_str()), tokyo) << "one more is kept of every content, not of every change";
    std::filesystem::remove(file);
    std::filesystem::create_symlink(zoneData / "America/New_York", file);
    EXPECT_EQ(zone(file.c_str()).secondsFromUtc(noon), -14400);
}

TEST(TimeZone, ReadsWallTimes) {
    struct Row {
        const char* name;
        const char* zone;
        DateComponents wall;
        const char* expected;
    };
    const Row rows[] = {
        {"plain", "Europe/Berlin", {2026, 6, 10, 8, 30, 0}, "2026-06-10T06:30:00Z"},
        {"gap_as_if_not_jumped", "Europe/Berlin", {2026, 3, 29, 2, 30, 0}, "2026-03-29T01:30:00Z"},
        {"overlap_first_occurrence", "Europe/Berlin", {2026, 10, 25, 2, 30, 0}, "2026-10-25T00:30:00Z"},
        {"hour_rolls_over", "UTC", {2026, 12, 31, 25, 0, 0}, "2027-01-01T01:00:00Z"},
        {"day_zero", "UTC", {2024, 3, 0, 3, 0, 0}, "2024-02-29T03:00:00Z"},
        {"last_listed_summer", "Europe/Berlin", {2037, 7, 1, 12, 0, 0}, "2037-07-01T10:00:00Z"},
        {"summer_by_the_rule", "Europe/Berlin", {2050, 7, 1, 12, 0, 0}, "2050-07-01T10:00:00Z"},
        {"winter_by_the_rule", "Europe/Berlin", {2050, 12, 1, 12, 0, 0}, "2050-12-01T11:00:00Z"},
        {"abolished_summer_time", "America/Mexico_City", {2026, 7, 1, 12, 0, 0}, "2026-07-01T18:00:00Z"},
        {"absurd_hour", "UTC", {2026, 1, 1, std::numeric_limits<std::int64_t>::max(), 0, 0}, "nil"},
        {"far_year", "UTC", {900'000'000, 1, 1, 0, 0, 0}, "nil"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(utc(zone(row.zone).dateFromComponents(row.wall)), row.expected) << row.name;
    }
}

TEST(TimeZone, GivesComponentsOfFiniteDatesOnly) {
    const TimeZone berlin = zone("Europe/Berlin");
    const Date beforeEpoch = dateFromSecondsSince1970(-0.5);
    EXPECT_EQ(berlin.componentsFromDate(beforeEpoch), (DateComponents{1970, 1, 1, 0, 59, 59}));
    EXPECT_TRUE(berlin.isDaylightSavingTime(test::date("2026-03-29T01:00:00Z")));
    EXPECT_TRUE(berlin.isDaylightSavingTime(test::date("2050-07-01T00:00:00Z")));
    EXPECT_FALSE(berlin.isDaylightSavingTime(test::date("2026-03-29T00:59:59Z")));
    for (const double seconds : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                                 -std::numeric_limits<double>::infinity(), 1e308, -1e15}) {
        const Date date = dateFromSecondsSince1970(seconds);
        EXPECT_FALSE(berlin.componentsFromDate(date)) << seconds;
        EXPECT_FALSE(iso8601MillisecondsFromDate(date)) << seconds;
        EXPECT_EQ(berlin.secondsFromUtc(date), 0) << seconds;
    }
}

TEST(Calendar, CountsWeekdaysFromSunday) {
    const Calendar calendar(zone("America/New_York"));
    EXPECT_EQ(calendar.weekdayFromDate(test::date("2026-06-15T03:59:59Z")), 1);  // still Sunday there
    EXPECT_FALSE(calendar.weekdayFromDate(std::nullopt));
}

TEST(Iso8601, WritesOffsetAndMillisecondsAndReadsMomentsOnly) {
    const Date evening = test::date("2024-06-10T21:05:00+02:00");
    EXPECT_EQ(iso8601StringFromDate(evening, zone("Europe/Berlin")), "2024-06-10T21:05:00+02:00");
    EXPECT_EQ(iso8601StringFromDate(evening, zone("America/St_Johns")), "2024-06-10T16:35:00-02:30");
    EXPECT_EQ(iso8601StringFromDate(evening, TimeZone::utc()), "2024-06-10T19:05:00Z");
    EXPECT_EQ(iso8601MillisecondsFromDate(dateByAddingSeconds(evening, 0.2504)), "2024-06-10T19:05:00.250Z");
    EXPECT_EQ(iso8601MillisecondsFromDate(dateByAddingSeconds(evening, 0.9996)), "2024-06-10T19:05:01.000Z");
    EXPECT_EQ(iso8601MillisecondsFromDate(dateFromSecondsSince1970(-0.25)), "1969-12-31T23:59:59.750Z");

    EXPECT_EQ(dateFromIso8601String("1970-01-01T00:01:00.5Z"), dateFromSecondsSince1970(60.5));
    EXPECT_EQ(dateFromIso8601String("1970-01-01T02:01:00+02:00"), dateFromSecondsSince1970(60));
    EXPECT_EQ(dateFromIso8601String("1970-01-01T02:01+02:00"), dateFromSecondsSince1970(60));
    for (const char* text :
         {"", "2026-06-10", "2026-06-10T08:30:00", "2026-06-10T08:30:00Z tail", "infinite-future", "2026-6-1T8:3:0Z",
          " 2026-06-10T08:30:00Z", "2026-06-10 08:30:00Z", "2026-06-10T08:30:00.Z", "2026-06-10T08:30.5Z",
          "2026-06-10T08:30:00+2:00", "2026-06-10T08:30:00+02:00:00", "2026-02-30T08:30Z", "2026-06-10T25:30Z"}) {
        EXPECT_FALSE(dateFromIso8601String(text)) << text;
    }
}

}  // namespace
}  // namespace lunabrook
