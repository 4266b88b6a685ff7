#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

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
        int hours, balance;
        const char *english, *german;
    };
    const Row rows[] = {
        {"no_balance_is_a_whole_debt", 8, 0, "debt of 100%", "schulden 100%"},
        {"just_under_a_whole", 8, 36, "debt of 99.9%", "schulden 99,9%"},
        {"credit", 8, 30240, "credit of 5.0%", "Guthaben 5,0%"},
        {"double_need", 8, 57600, "credit of 100%", "Guthaben 100%"},
        {"need_of_four_hours_met", 4, 14400, "credit of 0.0%", "Guthaben 0,0%"},
    };
    for (const Row& row : rows) {
        const auto answerOf = [&](TestDevice::Options options) {
            TestDevice device(std::move(options));
            device.store({{"watchTrackDict", Dictionary{{"rawSleepTime", 27000}, {"rawSleepBankTime", row.balance}}},
                          {"lunabrookConfig", Dictionary{{"requiredHours", row.hours}}}});
            return shown(HandleSleepMetrics(device).getSleepBankInfo(), {"response"});
        };
        EXPECT_EQ(answerOf({}),
                  "Today you slept 7 hours 30 minutes. You have a sleep " + std::string(row.english) + ".")
            << row.name;
        EXPECT_EQ(answerOf(german()),
                  "Heute schliefst du 7 Stunden, 30 Minuten. Schlafkonto " + std::string(row.german) + ".")
            << row.name;
    }
}

TEST(TimeAsleepTest, GivesTheWholeAnswer) {
    TestDevice device;
    const auto answer = [&] { return shown(HandleSleepMetrics(device).getSleepBankInfo()); };
    EXPECT_EQ(answer(), "response: No Data");
    device.store({{"watchTrackDict", Dictionary{{"rawSleepTime", 27000}, {"rawSleepBankTime", 25200}}},
                  {"sleepSessionStart", date("2026-06-09T22:05:00+02:00")},
                  {"sleepSessionEnd", date("2026-06-10T06:40:00+02:00")}});
    const std::string summary =
        R"(pasteItem: {"Recharge%":"94", "Credit%":"0.0", "Debt%": "12.5", "Sleep":"7.50", "Balance":"7.00", )";
    const std::string rest =
        " | rawSleepTime: #27000 | response: Today you slept 7 hours 30 minutes. You have a sleep debt of 12.5%.";
    EXPECT_EQ(answer(),
              summary + "\"Start\":\"Tue, 6/9/26, 10:05\u202FPM\", \"Until\":\"Wed, 6/10/26, 6:40\u202FAM\"}" + rest);
    device.store({{"sleepSessionEnd", "late"}});  // one end alone shows the present moment
    EXPECT_EQ(answer(),
              summary + "\"Start\":\"Wed, 6/10/26, 8:30\u202FAM\", \"Until\":\"Wed, 6/10/26, 8:30\u202FAM\"}" + rest);

    // Was once spoken as a credit of nan%.
    device.store({{"watchTrackDict", Dictionary{{"rawSleepTime", 27000}, {"rawSleepBankTime", std::nan("")}}}});
    EXPECT_THAT(answer(), testing::AllOf(testing::HasSubstr(R"("Credit%":"0.0", "Debt%": "0.0")"),
                                         testing::EndsWith("response: Today you slept 7 hours 30 minutes. .")));

    TestDevice translated(german());
    translated.store({{"watchTrackDict", Dictionary{{"rawSleepTime", 27000}, {"rawSleepBankTime", 30240}}}});
    EXPECT_THAT(shown(HandleSleepMetrics(translated).getSleepBankInfo(), {"pasteItem"}),
                testing::StartsWith(R"({"Recharge%":"94", "Guthaben%":"5,0", "Schulden%": "0,0", "Sleep":"7,50")"));
}

}  // namespace
}  // namespace lunabrook::test
