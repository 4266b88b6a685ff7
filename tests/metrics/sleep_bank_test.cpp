#include <gtest/gtest.h>

#include "metrics/group_metrics.h"
#include "platform/text/text_case.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

constexpr const char* kWednesday = "2026-06-10T10:00:00+02:00";

// Changes to the bank of a usual week: seven days of `seconds` up to `lastDay` of June, wake at 07:30, efficiency 80 %.
Dictionary week(double seconds, int lastDay = 10, const Dictionary& changes = {}) {
    Dictionary bank{{"medianWake", 37800}, {"averageEfficiency", 80}};
    for (int day = lastDay - 6; day <= lastDay; ++day) {
        bank.emplace("202606" + std::string(day < 10 ? "0" : "") + std::to_string(day), seconds);
    }
    for (const auto& [key, value] : changes) {
        bank.insert_or_assign(key, value);
    }
    return bank;
}

std::optional<Dictionary> bankResult(TestDevice& device, const Dictionary& bank, const Dictionary& config = {},
                                     double watchSleep = 0) {
    const Dictionary watch{{"rawSynchTime", device->now()}, {"rawSleepTime", watchSleep}, {"rawSleepBankTime", 1}};
    device.store({{"bankDict", bank}, {"lunabrookConfig", config}, {"watchTrackDict", watch}});
    return GroupMetrics(device).requestSleepBank();
}

TEST(SleepBankTest, WeighsTheLastSevenDays) {
    struct Row {
        const char* name;
        Dictionary bank;
        double watchSleep;
        const char* numbers;  // balance, forecast, percent
    };
    const Row rows[] = {
        {"on_target", week(28800), 0, "#28800 | #28800 | #1"},
        {"one_day_is_made_up_for", {{"20260610", 25200}}, 0, "#25200 | #32400 | #0.875"},
        {"watch_as_the_report_day_and_no_eighth_day", week(28800, 9), 25200, "#27900 | #31885.7148 | #0.9688"},
        {"report_day_wins_over_the_watch", week(28800), 3600, "#28800 | #28800 | #1"},
        {"negative_is_missing", week(25200, 10, {{"20260609", -1}}), 0, "#25200 | #37028.5703 | #0.875"},
        {"negative_report_day_keeps_the_watch_out", {{"20260610", -1}}, 25200, "nil"},
        {"zeros_are_no_balance", week(0), 0, "nil"},
        // A night without sleep counts, so the watch is not asked; and six of them leave nothing to forecast from.
        {"zero_is_a_night", week(28800, 10, {{"20260610", 0}}), 25200, "#21600 | #53485.7148 | #0.75"},
        {"zeros_since_the_first", week(0, 10, {{"20260604", 28000}}), 0, "#1000 | #56600 | #0.0347"},
        {"two_days_forecast", {{"20260609", 21600}, {"20260610", 21600}}, 0, "#21600 | #40114.2852 | #0.75"},
        {"less_than_a_second_of_the_watch", {}, 0.5, "#0.5 | #57599.5 | #0"},
        {"negative_night_hour", week(28800, 10, {{"nightHour", -3}}), 0, "nil"},
    };
    for (const Row& row : rows) {
        TestDevice device{{.now = kWednesday}};
        const auto result = bankResult(device, row.bank, {}, row.watchSleep);
        EXPECT_EQ(shown(result, {"bankBalance", "bankForecast", "bankPercent"}), row.numbers) << row.name;
    }
}

TEST(SleepBankTest, PlansTonight) {
    // Need and forecast are 7 hours, 8:45 in bed, up to the last two banks: one day of 2 (12) hours forecasts 12 (2).
    const Dictionary usual = week(25200, 14, {{"requiredHours", 7}});
    const Dictionary noMedian = week(25200, 14, {{"requiredHours", 7}, {"medianWake", -1}, {"averageWake", 36000}});
    const Dictionary midnight = week(25200, 14, {{"requiredHours", 7}, {"nightHour", 0}});
    const Dictionary debt{{"20260614", 7200}, {"requiredHours", 7}, {"medianWake", 37800}, {"averageEfficiency", 80}};
    const Dictionary credit{{"20260614", 43200}, {"requiredHours", 7}, {"medianWake", 37800}};
    const auto soundly = [](Dictionary bank) {
        bank.insert_or_assign("averageEfficiency", 100);
        return bank;
    };
    const Dictionary nightAtOne = week(25200, 14, {{"requiredHours", 7}, {"nightHour", 1}});
    const auto fixed = [](const std::string& weekday) {
        return Dictionary{{"WakeFixed" + weekday, false}, {"WakeTime" + weekday, 25200}};  // 07:00
    };
    constexpr const char* kSunday = "2026-06-14T10:00:00+02:00";
    constexpr const char* kSaturdayNight = "2026-06-13T21:00:00+02:00";  // the night hour has just struck
    constexpr const char* kSundayNight = "2026-06-14T00:30:00+02:00";
    struct Row {
        const char *name, *now;
        Dictionary bank, config;
        const char* times;  // into bed, awake
    };
    const Row rows[] = {
        {"in_bounds", kSunday, usual, {{"minimumHours", 6}, {"maximumHours", 9}}, "22:45 | 07:30"},
        {"least_hours", kSunday, usual, {{"minimumHours", 8}}, "21:30 | 07:30"},
        {"most_hours", kSunday, usual, {{"minimumHours", 6}, {"maximumHours", 6.5}}, "23:22 | 07:30"},
        {"most_equal_least", kSunday, usual, {{"minimumHours", 6}, {"maximumHours", 6}}, "00:00 | 07:30"},
        {"most_below_least", kSunday, usual, {{"minimumHours", 6}, {"maximumHours", 5}}, "22:45 | 07:30"},
        {"least_below_an_hour", kSunday, usual, {{"minimumHours", 0.9}}, "22:45 | 07:30"},
        {"least_of_one_hour", kSunday, soundly(credit), {{"minimumHours", 1}}, "05:30 | 07:30"},
        {"average_wake", kSunday, noMedian, {}, "22:15 | 07:00"},
        {"fixed_next_morning", kSunday, usual, fixed("0"), "22:15 | 07:00"},
        {"fixed_for_another_day", kSunday, usual, fixed("6"), "22:45 | 07:30"},
        {"fixed_at_midnight", kSunday, usual, {{"WakeFixed0", 1}, {"WakeTime0", 0}}, "21:00 | 00:00"},
        {"fixed_without_a_time", kSunday, usual, {{"WakeFixed0", true}}, "22:45 | 07:30"},
        {"fixed_on_a_sunday_of_tonight", kSaturdayNight, usual, fixed("6"), "22:15 | 07:00"},
        {"midnight_takes_the_report_day", kSunday, midnight, fixed("6"), "00:00 | 07:00"},
        {"night_hour_one_is_still_to_come", kSundayNight, nightAtOne, fixed("6"), "01:00 | 07:00"},
        {"debt_is_held_at_nine_hours", kSunday, soundly(debt), {}, "22:30 | 07:30"},
        {"debt_is_held_at_nine_hours_and_the_start", kSunday, debt, {}, "21:00 | 07:30"},
        // A hair more than 6:40 in bed: 100 / 90 is single.
        {"credit_is_held_at_six_hours", kSunday, credit, {}, "00:49 | 07:30"},
    };
    for (const Row& row : rows) {
        TestDevice device{{.now = row.now, .locale = "en_GB"}};
        const auto result = bankResult(device, row.bank, row.config);
        EXPECT_EQ(shown(result, {"latestBedTime", "wakeTimeLabel"}), row.times) << row.name;
    }
}

TEST(SleepBankTest, GivesTheWholeResultAndServesItAtNight) {
    TestDevice device{{.now = kWednesday, .locale = "en_GB"}};
    const std::string byDay =
        "adjustedBedTime: @2026-06-10T19:30:00.000Z | bankBalance: #28800 | bankForecast: #28800 | bankPercent: #1 | "
        "bedTime: @2026-06-09T19:30:00.000Z | latestBedLabel: Try to be in bed by 21:30 | latestBedTime: 21:30 | "
        R"(pasteItem: {"Tonight'sBedtime":"21:30", "Waketime":"07:30", "TimeUntilBed": "11.50", "RequiredHours":"8.00"} | )"
        "timeUntilBed: #41400 | timeUntilBedLabel: 11h 30m | timeUntilWakeLabel: 21h 30m | "
        "wakeTime: @2026-06-10T05:30:00.000Z | wakeTimeLabel: 07:30";
    EXPECT_EQ(shown(bankResult(device, week(28800))), byDay);
    EXPECT_EQ(shown(*dictionaryForKey(device.stored(), "cachedSleepBank")), byDay);
    device.setNow("2026-06-10T22:00:00+02:00");
    std::string atNight = byDay;
    for (const auto& [day, night] :
         {std::pair("11.50", "-0.50"), {"#41400", "#-1800"}, {"11h 30m", "-0h 30m"}, {"21h 30m", "9h 30m"}}) {
        atNight = stringByReplacing(atNight, day, night);
    }
    EXPECT_EQ(shown(bankResult(device, {})), atNight);
    EXPECT_EQ(shown(device.stored(), {"cachedSleepBankUpdate"}), "@2026-06-10T08:00:00.000Z") << "no write at night";

    TestDevice freshAtNight{{.now = "2026-06-10T21:00:00+02:00"}};
    const auto fresh = bankResult(freshAtNight, week(28800, 11));
    EXPECT_EQ(shown(fresh, {"bedTime"}), shown(fresh, {"adjustedBedTime"}));

    // A night hour of 0 never counts as struck: the plan is for tomorrow.
    TestDevice midnight{{.now = kWednesday}};
    EXPECT_EQ(
        shown(bankResult(midnight, week(28800, 10, {{"nightHour", 0}})), {"adjustedBedTime", "timeUntilBedLabel"}),
        "@2026-06-10T22:30:00.000Z | 14h 30m");

    TestDevice withoutWake{{.now = kWednesday}};
    EXPECT_EQ(shown(bankResult(withoutWake, week(28800, 10, {{"medianWake", -1}}))),
              "bankBalance: #28800 | bankForecast: #28800 | bankPercent: #1");
    EXPECT_FALSE(withoutWake.stored().contains("cachedSleepBank"));

    // No store can hold that date: other readers of the list would refuse all of it.
    TestDevice absurd{{.now = kWednesday}};
    const Dictionary wakeAt{{"WakeFixed3", true}, {"WakeTime3", 1e18}};
    EXPECT_TRUE(bankResult(absurd, week(28800), wakeAt)->contains("wakeTime"));
    EXPECT_FALSE(absurd.stored().contains("cachedSleepBank"));
    EXPECT_TRUE(absurd.faults().empty());
}

TEST(SleepBankTest, TheCacheIsServedFromAMinuteAfterThePreviousStart) {
    TestDevice device{{.now = "2026-06-10T22:00:00+02:00"}};
    const auto servedWith = [&](Value update) {
        device.store({{"cachedSleepBankUpdate", std::move(update)}, {"cachedSleepBank", "broken"}});
        return GroupMetrics(device).returnPreviousSleepBank();
    };
    EXPECT_FALSE(servedWith("2026-06-10"));
    EXPECT_FALSE(servedWith(date("2026-06-09T21:01:00+02:00")));
    EXPECT_EQ(shown(servedWith(date("2026-06-09T21:01:01+02:00"))),
              "pasteItem: {\"Tonight'sBedtime\":\"(null)\", \"Waketime\":\"(null)\", \"TimeUntilBed\": \"0.00\", "
              "\"RequiredHours\":\"0.00\"} | timeUntilBed: #0 | timeUntilBedLabel: 0h 0m | timeUntilWakeLabel: 0h 0m");
    device.store({{"lunabrookConfig", Dictionary{{"nightHour", 22.7}}}});
    EXPECT_FALSE(servedWith(date("2026-06-09T22:01:00+02:00"))) << "the hour is that of the settings";
}

TEST(SleepBankTest, PassesOverTheNightsOfTheClockChange) {
    // Ten hours after 21:00, whatever the clocks do; a fixed wake is seven hours after midnight likewise.
    TestDevice spring{{.now = "2026-03-29T10:00:00+02:00", .locale = "en_GB"}};
    EXPECT_EQ(shown(bankResult(spring, {{"medianWake", 36000}}, {}, 3600), {"wakeTimeLabel"}), "08:00");
    const Dictionary monday{{"WakeFixed0", 1}, {"WakeTime0", 25200}};
    EXPECT_EQ(shown(bankResult(spring, {{"medianWake", 1}}, monday, 3600), {"wakeTimeLabel"}), "08:00");
    TestDevice autumn{{.now = "2026-11-01T10:00:00-05:00", .timeZone = "America/New_York", .locale = "en_GB"}};
    EXPECT_EQ(shown(bankResult(autumn, {{"medianWake", 36000}}, {}, 3600), {"wakeTimeLabel"}), "06:00");
}

TEST(SleepBankTest, SpeaksGerman) {
    TestDevice device{{.now = kWednesday,
                       .locale = "de_DE",
                       .languages = {"de"},
                       .translations = {{"Try to be in bed by %@", "Sei um %@ im Bett"},
                                        {"Tonight's Bedtime", "Bettzeit heute"},
                                        {"Time until bed", "zeit bis zum bett"}}}};
    EXPECT_EQ(shown(bankResult(device, week(28800)), {"latestBedLabel", "pasteItem"}),
              R"(Sei um 21:30 im Bett | {"Bettzeitheute":"21:30", "Waketime":"07:30", "ZeitBisZumBett": "11,50", )"
              R"("RequiredHours":"8,00"})");
}

}  // namespace
}  // namespace lunabrook::test
