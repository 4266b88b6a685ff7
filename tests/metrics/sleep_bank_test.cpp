#include <gtest/gtest.h>

#include "metrics/group_metrics.h"
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

Dictionary without(Dictionary bank, const char* key) {
    bank.erase(key);
    return bank;
}

std::optional<Dictionary> bankResult(TestDevice& device, const Dictionary& bank, const Dictionary& config = {},
                                     std::optional<double> watchSleep = {}) {
    Dictionary keys{{"bankDict", bank}, {"lunabrookConfig", config}};
    if (watchSleep) {
        keys.emplace(
            "watchTrackDict",
            Dictionary{{"rawSynchTime", device->now()}, {"rawSleepTime", *watchSleep}, {"rawSleepBankTime", 1}});
    }
    device.store(keys);
    return GroupMetrics(device).requestSleepBank();
}

TEST(SleepBankTest, WeighsTheLastSevenDays) {
    const Dictionary oneDay = {{"20260610", 25200}};
    const Dictionary sixDays = without(week(28800), "20260610");
    struct Row {
        const char* name;
        Dictionary bank;
        std::optional<double> watchSleep;
        const char *balance, *forecast, *percent;
    };
    const Row rows[] = {
        {"on_target", week(28800), {}, "#28800", "#28800", "#1"},
        {"one_day_balances_twice_the_need", oneDay, {}, "#25200", "#32400", "#0.875"},
        {"watch_alone", {}, 25200, "#25200", "#32400", "#0.875"},
        {"watch_as_the_report_day", sixDays, 25200, "#27900", "#31885.7148", "#0.9688"},
        {"report_day_wins_over_the_watch", week(28800), 3600, "#28800", "#28800", "#1"},
        {"missing_day_counts_as_slept_tomorrow",
         without(week(25200), "20260609"),
         {},
         "#25200",
         "#37028.5703",
         "#0.875"},
        {"negative_is_missing", week(25200, 10, {{"20260609", -1}}), {}, "#25200", "#37028.5703", "#0.875"},
        {"negative_report_day_is_no_gap_for_the_watch", {{"20260610", -1}}, 25200, "missing", "missing", "missing"},
        {"an_eighth_day_does_not_count", {{"20260603", 25200}}, {}, "missing", "missing", "missing"},
        {"zeros_are_no_balance", week(0), {}, "missing", "missing", "missing"},
        {"negative_night_hour", week(28800, 10, {{"nightHour", -3}}), {}, "missing", "missing", "missing"},
    };
    for (const Row& row : rows) {
        TestDevice device{{.now = kWednesday}};
        const auto result = bankResult(device, row.bank, {}, row.watchSleep);
        EXPECT_EQ(shown(result, "bankBalance"), row.balance) << row.name;
        EXPECT_EQ(shown(result, "bankForecast"), row.forecast) << row.name;
        EXPECT_EQ(shown(result, "bankPercent"), row.percent) << row.name;
    }
}

TEST(SleepBankTest, PlansTonight) {
    // Need 7 hours: seven days of 7 hours forecast 7 hours, 8:45 in bed; one day of 2 (of 12) hours forecasts 12 (2).
    // At 90 % six hours take a hair more than 6:40 in bed: 100 / 90 is single.
    struct Row {
        const char *name, *now;
        Dictionary bank, config;
        const char *bed, *wake;
    };
    const auto seven = [](int lastDay, Dictionary changes = {}) {
        changes.emplace("requiredHours", 7);
        return week(25200, lastDay, changes);
    };
    const auto fixed = [](int weekday, Value time) {
        return Dictionary{{"WakeFixed" + std::to_string(weekday), false},
                          {"WakeTime" + std::to_string(weekday), std::move(time)}};
    };
    const Dictionary debt = {
        {"20260610", 7200}, {"requiredHours", 7}, {"medianWake", 37800}, {"averageEfficiency", 80}};
    const Dictionary credit = {{"20260610", 43200}, {"requiredHours", 7}, {"medianWake", 37800}};
    const char* kNine = "9:00\u202FPM";
    const char* kUsual = "10:45\u202FPM";
    const char* kHalfPastSeven = "7:30\u202FAM";
    const char* kSeven = "7:00\u202FAM";
    const Row rows[] = {
        {"between_the_bounds",
         kWednesday,
         seven(10),
         {{"minimumHours", 6}, {"maximumHours", 9}},
         kUsual,
         kHalfPastSeven},
        {"least_hours", kWednesday, seven(10), {{"minimumHours", 8}}, "9:30\u202FPM", kHalfPastSeven},
        {"most_hours",
         kWednesday,
         seven(10),
         {{"minimumHours", 6}, {"maximumHours", 6.5}},
         "11:22\u202FPM",
         kHalfPastSeven},
        {"most_below_least", kWednesday, seven(10), {{"minimumHours", 6}, {"maximumHours", 5}}, kUsual, kHalfPastSeven},
        {"least_below_an_hour", kWednesday, seven(10), {{"minimumHours", 0.9}}, kUsual, kHalfPastSeven},
        {"debt_is_held_at_two_hours_more_and_the_start", kWednesday, debt, {}, kNine, kHalfPastSeven},
        {"credit_is_held_at_an_hour_less", kWednesday, credit, {}, "12:49\u202FAM", kHalfPastSeven},
        {"average_wake",
         kWednesday,
         seven(10, {{"medianWake", 0}, {"averageWake", 36000}}),
         {},
         "10:15\u202FPM",
         kSeven},
        {"fixed_for_the_next_morning", kWednesday, seven(10), fixed(3, 25200), "10:15\u202FPM", kSeven},
        {"fixed_for_another_day", kWednesday, seven(10), fixed(2, 25200), kUsual, kHalfPastSeven},
        {"fixed_without_a_time", kWednesday, seven(10), {{"WakeFixed3", true}}, kUsual, kHalfPastSeven},
        {"fixed_on_a_sunday", "2026-06-13T10:00:00+02:00", seven(13), fixed(6, 25200), "10:15\u202FPM", kSeven},
        {"fixed_on_a_monday", "2026-06-14T10:00:00+02:00", seven(14), fixed(0, 25200), "10:15\u202FPM", kSeven},
        {"at_night_the_next_morning_is_the_report_day", "2026-06-13T22:00:00+02:00", seven(14), fixed(6, 25200),
         "10:15\u202FPM", kSeven},
        {"night_hour_0_takes_the_report_day", kWednesday, seven(10, {{"nightHour", 0}}), fixed(2, 25200),
         "12:00\u202FAM", kSeven},
    };
    for (const Row& row : rows) {
        TestDevice device{{.now = row.now}};
        const auto result = bankResult(device, row.bank, row.config);
        EXPECT_EQ(shown(result, "latestBedLabel"), std::string("Try to be in bed by ") + row.bed) << row.name;
        EXPECT_EQ(shown(result, "wakeTimeLabel"), row.wake) << row.name;
    }
}

TEST(SleepBankTest, GivesTheWholeResultAndServesItAtNight) {
    TestDevice device{{.now = kWednesday}};
    Shown expected = {
        {"bankBalance", "#28800"},
        {"bankForecast", "#28800"},
        {"bankPercent", "#1"},
        {"bedTime", "@2026-06-09T19:30:00.000Z"},
        {"latestBedTime", "9:30\u202FPM"},
        {"latestBedLabel", "Try to be in bed by 9:30\u202FPM"},
        {"adjustedBedTime", "@2026-06-10T19:30:00.000Z"},
        {"timeUntilBed", "#41400"},
        {"timeUntilBedLabel", "11h 30m"},
        {"wakeTime", "@2026-06-10T05:30:00.000Z"},
        {"wakeTimeLabel", "7:30\u202FAM"},
        {"timeUntilWakeLabel", "21h 30m"},
        {"pasteItem",
         "{\"Tonight'sBedtime\":\"9:30\u202FPM\", \"Waketime\":\"7:30\u202FAM\", "
         "\"TimeUntilBed\": \"11.50\", \"RequiredHours\":\"8.00\"}"},
    };
    EXPECT_EQ(shown(bankResult(device, week(28800))), expected);
    EXPECT_EQ(shown(device.stored(), "cachedSleepBankUpdate"), "@2026-06-10T08:00:00.000Z");
    EXPECT_EQ(shown(*dictionaryForKey(device.stored(), "cachedSleepBank")), expected);

    device.setNow("2026-06-10T22:00:00+02:00");
    device.store({{"bankDict", Dictionary{}}});
    expected["timeUntilBed"] = "#-1800";
    expected["timeUntilBedLabel"] = "-0h 30m";
    expected["timeUntilWakeLabel"] = "9h 30m";
    expected["pasteItem"] =
        "{\"Tonight'sBedtime\":\"9:30\u202FPM\", \"Waketime\":\"7:30\u202FAM\", "
        "\"TimeUntilBed\": \"-0.50\", \"RequiredHours\":\"8.00\"}";
    EXPECT_EQ(shown(GroupMetrics(device).requestSleepBank()), expected);
    EXPECT_EQ(shown(device.stored(), "cachedSleepBankUpdate"), "@2026-06-10T08:00:00.000Z")
        << "nothing is written back";

    TestDevice freshAtNight{{.now = "2026-06-10T22:00:00+02:00"}};
    const auto fresh = bankResult(freshAtNight, week(28800, 11));
    EXPECT_EQ(shown(fresh, "bedTime"), "@2026-06-10T19:30:00.000Z");
    EXPECT_EQ(shown(fresh, "adjustedBedTime"), "@2026-06-10T19:30:00.000Z");
}

TEST(SleepBankTest, AWeekWithoutAWakeTimeIsNotCached) {
    TestDevice device{{.now = kWednesday}};
    const auto result = bankResult(device, without(week(28800), "medianWake"));
    EXPECT_EQ(shown(result), (Shown{{"bankBalance", "#28800"}, {"bankForecast", "#28800"}, {"bankPercent", "#1"}}));
    EXPECT_FALSE(device.stored().contains("cachedSleepBank"));
}

TEST(SleepBankTest, TheCacheIsServedFromAMinuteAfterThePreviousStart) {
    TestDevice device{{.now = "2026-06-10T22:00:00+02:00"}};
    const auto servedWith = [&](Value update, Value cache) {
        device.store({{"cachedSleepBankUpdate", std::move(update)}, {"cachedSleepBank", std::move(cache)}});
        return GroupMetrics(device).returnPreviousSleepBank();
    };
    EXPECT_FALSE(servedWith(date("2026-06-09T21:01:00+02:00"), Dictionary{}));
    EXPECT_FALSE(servedWith("2026-06-10", Dictionary{}));
    // Nothing in the cache: no sentence, times of 0.
    const Shown expected = {
        {"timeUntilBed", "#0"},
        {"timeUntilBedLabel", "0h 0m"},
        {"timeUntilWakeLabel", "0h 0m"},
        {"pasteItem",
         "{\"Tonight'sBedtime\":\"(null)\", \"Waketime\":\"(null)\", \"TimeUntilBed\": \"0.00\", "
         "\"RequiredHours\":\"0.00\"}"},
    };
    EXPECT_EQ(shown(servedWith(date("2026-06-09T21:01:01+02:00"), "broken")), expected);
}

TEST(SleepBankTest, PassesOverTheNightsOfTheClockChange) {
    // Ten hours after 21:00, whatever the clocks do; a fixed wake is seven hours after midnight likewise.
    struct Row {
        const char *name, *zone, *now, *wake, *fixedWake;
    };
    const Row rows[] = {
        {"spring", "Europe/Berlin", "2026-03-29T10:00:00+02:00", "8:00\u202FAM", "8:00\u202FAM"},
        {"autumn", "America/New_York", "2026-11-01T10:00:00-05:00", "6:00\u202FAM", "6:00\u202FAM"},
        {"autumn_in_berlin", "Europe/Berlin", "2026-10-25T10:00:00+01:00", "6:00\u202FAM", "6:00\u202FAM"},
    };
    for (const Row& row : rows) {
        TestDevice device{{.now = row.now, .timeZone = row.zone}};
        const Dictionary bank = {{"medianWake", 36000}};
        EXPECT_EQ(shown(bankResult(device, bank, {}, 25200), "wakeTimeLabel"), row.wake) << row.name;
        const Dictionary monday = {{"WakeFixed0", 1}, {"WakeTime0", 25200}};
        EXPECT_EQ(shown(bankResult(device, bank, monday, 25200), "wakeTimeLabel"), row.fixedWake) << row.name;
    }
}

TEST(SleepBankTest, SpeaksGerman) {
    TestDevice device{{.now = kWednesday,
                       .locale = "de_DE",
                       .languages = {"de"},
                       .translations = {{"Try to be in bed by %@", "Sei um %@ im Bett"},
                                        {"Tonight's Bedtime", "Bettzeit heute"},
                                        {"Time until bed", "zeit bis zum bett"}}}};
    const auto result = bankResult(device, week(28800));
    EXPECT_EQ(shown(result, "latestBedLabel"), "Sei um 21:30 im Bett");
    EXPECT_EQ(shown(result, "pasteItem"),
              R"({"Bettzeitheute":"21:30", "Waketime":"07:30", "ZeitBisZumBett": "11,50", "RequiredHours":"8,00"})");
}

}  // namespace
}  // namespace lunabrook::test
