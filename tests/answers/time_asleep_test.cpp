#include <gtest/gtest.h>

#include "answers/handle_sleep_metrics.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

TestDevice::Options german() {
    return {.locale = "de_DE",
            .languages = {"de"},
            .translations = {{"Today you slept ", "Heute schliefst du "},
                             {"Sleep Bank", "Schlafkonto"},
                             {"Debt", "Schulden"},
                             {"Credit", "Guthaben"}}};
}

TEST(TimeAsleepTest, SaysDebtAndCredit) {
    struct Row {
        const char* name;
        Value hours, asleep, balance;
        const char *english, *german;
    };
    // Eight hours are needed unless said otherwise.
    const Row rows[] = {
        {"debt", 8, 27000, 25200, "7 hours 30 minutes. You have a sleep debt of 12.5%.", "Schlafkonto schulden 12,5%."},
        {"no_balance_is_a_whole_debt", 8, 27000, 0, "7 hours 30 minutes. You have a sleep debt of 100%.",
         "Schlafkonto schulden 100%."},
        {"just_under_a_whole", 8, 27000, 36, "7 hours 30 minutes. You have a sleep debt of 99.9%.",
         "Schlafkonto schulden 99,9%."},
        {"need_met", 8, 27000, 28800, "7 hours 30 minutes. You have a sleep credit of 0.0%.",
         "Schlafkonto Guthaben 0,0%."},
        {"credit", 8, 27000, 30240, "7 hours 30 minutes. You have a sleep credit of 5.0%.",
         "Schlafkonto Guthaben 5,0%."},
        {"double_need", 8, 27000, 57600, "7 hours 30 minutes. You have a sleep credit of 100%.",
         "Schlafkonto Guthaben 100%."},
        {"four_hours_count", 4.0, 27000, 14400, "7 hours 30 minutes. You have a sleep credit of 0.0%.",
         "Schlafkonto Guthaben 0,0%."},
        {"less_is_eight", 3.9, 27000, 14400, "7 hours 30 minutes. You have a sleep debt of 50.0%.",
         "Schlafkonto schulden 50,0%."},
        {"unset_is_eight", "", 0, 14400, "0 hours 0 minutes. You have a sleep debt of 50.0%.",
         "Schlafkonto schulden 50,0%."},
    };
    for (const Row& row : rows) {
        const Dictionary store{
            {"watchTrackDict", Dictionary{{"rawSleepTime", row.asleep}, {"rawSleepBankTime", row.balance}}},
            {"lunabrookConfig", Dictionary{{"requiredHours", row.hours}}}};
        TestDevice english;
        english.store(store);
        EXPECT_EQ(shown(HandleSleepMetrics(english).getSleepBankInfo(), "response"),
                  std::string("Today you slept ") + row.english)
            << row.name;
        TestDevice translated(german());
        translated.store(store);
        const std::string sentence = shown(HandleSleepMetrics(translated).getSleepBankInfo(), "response");
        EXPECT_TRUE(sentence.starts_with("Heute schliefst du ")) << row.name << ": " << sentence;
        EXPECT_TRUE(sentence.ends_with(std::string(". ") + row.german)) << row.name << ": " << sentence;
    }
}

TEST(TimeAsleepTest, GivesTheWholeAnswer) {
    TestDevice device;
    EXPECT_EQ(shown(HandleSleepMetrics(device).getSleepBankInfo()), (Shown{{"response", "No Data"}}));

    device.store({{"watchTrackDict", Dictionary{{"rawSleepTime", 27000}, {"rawSleepBankTime", 25200}}},
                  {"sleepSessionStart", date("2026-06-09T22:05:00+02:00")},
                  {"sleepSessionEnd", date("2026-06-10T06:40:00+02:00")}});
    const std::string summary =
        R"({"Recharge%":"94", "Credit%":"0.0", "Debt%": "12.5", "Sleep":"7.50", "Balance":"7.00", )";
    Shown expected = {
        {"rawSleepTime", "#27000"},
        {"response", "Today you slept 7 hours 30 minutes. You have a sleep debt of 12.5%."},
        {"pasteItem", summary + "\"Start\":\"Tue, 6/9/26, 10:05\u202FPM\", \"Until\":\"Wed, 6/10/26, 6:40\u202FAM\"}"},
    };
    EXPECT_EQ(shown(HandleSleepMetrics(device).getSleepBankInfo()), expected);

    device.store({{"sleepSessionEnd", "late"}});
    expected["pasteItem"] =
        summary + "\"Start\":\"Wed, 6/10/26, 8:30\u202FAM\", \"Until\":\"Wed, 6/10/26, 8:30\u202FAM\"}";
    EXPECT_EQ(shown(HandleSleepMetrics(device).getSleepBankInfo()), expected)
        << "one end alone shows the present moment";
}

TEST(TimeAsleepTest, KeepsCommasAndCapitalsOfATranslation) {
    TestDevice device(german());
    device.store({{"watchTrackDict", Dictionary{{"rawSleepTime", 27000}, {"rawSleepBankTime", 30240}}}});
    const auto answer = HandleSleepMetrics(device).getSleepBankInfo();
    EXPECT_EQ(shown(answer, "response"), "Heute schliefst du 7 Stunden, 30 Minuten. Schlafkonto Guthaben 5,0%.");
    EXPECT_TRUE(shown(answer, "pasteItem")
                    .starts_with(R"({"Recharge%":"94", "Guthaben%":"5,0", "Schulden%": "0,0", "Sleep":"7,50", )"
                                 R"("Balance":"8,40", "Start":")"));
}

}  // namespace
}  // namespace lunabrook::test
