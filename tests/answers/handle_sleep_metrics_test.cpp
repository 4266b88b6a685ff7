#include "answers/handle_sleep_metrics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

struct Metric {
    std::optional<Dictionary> (HandleSleepMetrics::*answer)();
    const char *sentenceStart, *summaryStart;
};
constexpr Metric kMetrics[] = {
    {&HandleSleepMetrics::getSleepRingsInfo, "1 sleep ring closed. Today's", "{\"Sleep%\""},
    {&HandleSleepMetrics::getLatestBedtimeInfo, "Try to be in bed by 11:00\u202FPM", "{\"Tonight'sBedtime\""},
    {&HandleSleepMetrics::getReadinessInfo, "Today's Readiness is optimal.", "{\"Stars\""},
    {&HandleSleepMetrics::getOctaneInfo, "Sleep Fuel Rating is jet fuel.", "{\"Stars\""},
    {&HandleSleepMetrics::getSpO2Info, "Today's average SpO2 is 95.5%.", "{\"SpO2\""},
    {&HandleSleepMetrics::getWristTempInfo, "Today's temperature is 34.50°.", "{\"Temperature\""},
    {&HandleSleepMetrics::getRespirationInfo, "Today's average respiration rate is --.", "{\"RespRate\""},
};

TEST(HandleSleepMetricsTest, SpeaksEachMetric) {
    const Dictionary record{{"key", "20260610"}, {"hrvTodayVal", 60}, {"hrvAverage", 50},
                            {"bpmTodayVal", 48}, {"bpmAverage", 60},  {"averageSpO2", 95.5}};
    const Dictionary watch{{"rawSynchTime", date("2026-06-10T07:00:00+02:00")}, {"rawSleepTime", 28800}};
    TestDevice device;
    device.store({{"watchTrackDict", watch},
                  {"bankDict", Dictionary{{"readyDict", record},
                                          {"octaneDict", record},
                                          {"spO2Dict", record},
                                          {"respRateDict", record},
                                          {"wristTempKey", "20260610"},
                                          {"wristTempTodayValue", 34.5},
                                          {"wristTempAverage28", 34.5},
                                          {"medianWake", 36000},
                                          {"averageEfficiency", 100}}}});
    const TestDevice empty{{.languages = {"de"}, .translations = {{"No Data", "Keine Daten"}}}};
    HandleSleepMetrics handler(device);
    HandleSleepMetrics withoutData(empty);
    for (const auto& [answer, sentenceStart, summaryStart] : kMetrics) {
        const auto given = (handler.*answer)();
        EXPECT_EQ(given->size(), 2U) << sentenceStart;
        EXPECT_THAT(shown(given, {"response"}), testing::StartsWith(sentenceStart));
        EXPECT_THAT(shown(given, {"pasteItem"}), testing::StartsWith(summaryStart));
        EXPECT_EQ(shown((withoutData.*answer)()), "response: Keine Daten") << sentenceStart;
    }
}

TEST(HandleSleepMetricsTest, DropsTheSummaryWithoutASentence) {
    TestDevice device{{.now = "2026-06-10T22:00:00+02:00"}};
    device.store({{"cachedSleepBankUpdate", date("2026-06-10T10:00:00+02:00")}});
    EXPECT_EQ(shown(GroupMetrics(device).returnPreviousSleepBank(), {"latestBedLabel"}), "missing");
    EXPECT_EQ(shown(HandleSleepMetrics(device).getLatestBedtimeInfo()), "response: No Data");
}

TEST(HandleSleepMetricsTest, ReadsSwitchesAndSettings) {
    TestDevice device;
    device.store({{"PasteSwitchOff3", true},
                  {"PasteSwitchOff4", false},
                  {"PasteSwitchOff-1", "yes"},
                  {"lunabrookConfig", Dictionary{{"requiredHours", 7.5}}}});
    HandleSleepMetrics handler(device);
    EXPECT_EQ(handler.getLunabrookConfigValueForKey("requiredHours"), 0.0F) << "the store is not open yet";
    for (const auto& [identifier, pastes] : {std::pair(3, false), {4, true}, {5, true}, {-1, false}}) {
        EXPECT_EQ(handler.shouldPasteForID(identifier), pastes) << identifier;
    }
    EXPECT_EQ(handler.getLunabrookConfigValueForKey("requiredHours"), 7.5F);
    EXPECT_EQ(handler.getLunabrookConfigValueForKey("none"), 0.0F);
}

TEST(HandleSleepMetricsTest, SaysOneDurationOfTheWatch) {
    TestDevice device;
    HandleSleepMetrics handler(device);
    const auto response = [&](std::string_view key, std::int64_t format, std::int64_t type) {
        return shown(handler.getSleepMetricForKey(key, format, type), {"response"});
    };
    EXPECT_EQ(response("deep", 0, 0), "No Data");
    device.store({{"watchTrackDict", Dictionary{{"deep", 5400}}}});
    EXPECT_EQ(response("deep", 0, 0), "Today you slept 1 hour, 30 minutes");
    EXPECT_EQ(response("deep", 1, 0), "No Data");
    EXPECT_EQ(response("deep", 0, 1), "No Data");
}

// Every key at every level with one value of the wrong kind or size; `order` puts the night hours and the watch's time
// in order, so that the numbers reach the arithmetic.
Dictionary hostileStore(const Value& value, const Dictionary& order) {
    std::istringstream keys(
        "rawSynchTime rawSleepTime rawSleepBankTime rawRingRating rawRingValues showStages rawHRVVal rawWakingVal "
        "hrvAverage hrvTodayVal bpmAverage bpmTodayVal averageSpO2 minSpO2 averageSpO27 averageRespRate "
        "averageRespRate7 nightHour requiredHours minimumHours maximumHours WakeFixed3 WakeTime3 medianWake "
        "averageWake averageEfficiency startDate averageBedtime prevAverageBedtime wristTempScore wristTempTodayValue "
        "wristTempAverage28 20260610 20260609 bedTime wakeTime bankForecast latestBedTime readyStars lastConsistency "
        "sleepSessionStart sleepSessionEnd PasteSwitchOff0");
    Dictionary record = order;
    record.insert({{"key", "20260610"}, {"wristTempKey", "20260610"}});
    for (std::string key; keys >> key;) {
        record.emplace(key, value);
    }
    Dictionary bank = record;
    bank.insert({{"spO2Dict", record}, {"respRateDict", record}, {"readyDict", record}, {"octaneDict", record}});
    Dictionary store = record;
    store.insert({{"cachedSleepBankUpdate", date("2026-06-10T07:00:00+02:00")}, {"bankDict", bank}});
    store.insert({{"watchTrackDict", record}, {"lunabrookConfig", record}, {"cachedSleepBank", record}});
    return store;
}

void askEverything(const Device& device, const std::string& what) {
    GroupMetrics metrics(device);
    metrics.requestConsistencyDict();
    metrics.requestQualityForSwift();
    metrics.returnPreviousSleepBank();
    HandleSleepMetrics handler(device);
    for (const Metric& metric : kMetrics) {
        EXPECT_TRUE((handler.*metric.answer)()->contains("response")) << what;
    }
    EXPECT_TRUE(handler.getSleepBankInfo()->contains("response")) << what;
    EXPECT_TRUE(handler.getSleepMetricForKey("rawSleepTime", 0, 0)->contains("response")) << what;
    handler.shouldPasteForID(0);
}

TEST(HandleSleepMetricsTest, AnswersWhateverTheStoreHolds) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr std::numeric_limits<std::int64_t> kIntegers;
    // clang-format off
    const Value values[] = {
        std::nan(""), kInfinity, -kInfinity, 1e308, 1e-308, kIntegers.max(), kIntegers.min(), 0, -3, 22.7, 99, true,
        "%n%s%@|1e999|nan|", Array{1, "two"}, Dictionary{{"key", 1}}, Data{0, 255},
        dateFromSecondsSince1970(kInfinity), dateFromSecondsSince1970(std::nan("")), dateFromSecondsSince1970(1e300)};
    // clang-format on
    for (const Value& value : values) {
        for (const char* now : {"2026-06-10T08:30:00+02:00", "2026-06-10T22:30:00+02:00"}) {
            TestDevice device{{.now = now,
                               .languages = {"de"},
                               .translations = {{"Today's temperature is %@. %@ %@ baseline.", "%d %s %9$@ %@ %"},
                                                {"Try to be in bed by %@", "%n%@%@%.f"}}}};
            for (const Dictionary& order : {Dictionary{}, Dictionary{{"nightHour", 21}, {"rawSynchTime", date(now)}}}) {
                device.store(hostileStore(value, order));
                askEverything(device, shownValue(value));
            }
        }
    }
}

}  // namespace
}  // namespace lunabrook::test
