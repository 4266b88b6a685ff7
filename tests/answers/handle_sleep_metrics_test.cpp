#include "answers/handle_sleep_metrics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "answers/handle_lights_off.h"
#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

using Answer = std::optional<Dictionary> (HandleSleepMetrics::*)();

TEST(HandleSleepMetricsTest, SpeaksEachMetric) {
    const Dictionary heart{
        {"key", "20260610"}, {"hrvTodayVal", 60}, {"hrvAverage", 50}, {"bpmTodayVal", 48}, {"bpmAverage", 60}};
    TestDevice device;
    device.store({
        {"watchTrackDict", Dictionary{{"rawSynchTime", date("2026-06-10T07:00:00+02:00")}, {"rawSleepTime", 28800}}},
        {"bankDict", Dictionary{{"readyDict", heart},
                                {"octaneDict", heart},
                                {"spO2Dict", Dictionary{{"key", "20260610"}, {"averageSpO2", 95.5}}},
                                {"respRateDict", Dictionary{{"key", "20260610"}, {"averageRespRate", 14.5}}},
                                {"wristTempKey", "20260610"},
                                {"wristTempTodayValue", 34.5},
                                {"wristTempAverage28", 34.5},
                                {"medianWake", 36000},
                                {"averageEfficiency", 100}}},
    });
    struct Row {
        const char* name;
        Answer answer;
        const char *sentence, *summaryStart;
    };
    const Row rows[] = {
        {"rings", &HandleSleepMetrics::getSleepRingsInfo, "1 sleep ring closed. Today's sleep rating is 25%.",
         "{\"Sleep%\""},
        {"bedtime", &HandleSleepMetrics::getLatestBedtimeInfo, "Try to be in bed by 11:00\u202FPM",
         "{\"Tonight'sBedtime\""},
        {"readiness", &HandleSleepMetrics::getReadinessInfo, "Today's Readiness is optimal.", "{\"Stars\""},
        {"fuel", &HandleSleepMetrics::getOctaneInfo, "Sleep Fuel Rating is jet fuel.", "{\"Stars\""},
        {"oxygen", &HandleSleepMetrics::getSpO2Info, "Today's average SpO2 is 95.5%. Today's SpO2 range is 0% to 0%.",
         "{\"SpO2\""},
        {"temperature", &HandleSleepMetrics::getWristTempInfo,
         "Today's temperature is 34.50°. No change from baseline.", "{\"Temperature\""},
        {"respiration", &HandleSleepMetrics::getRespirationInfo,
         "Today's average respiration rate is 14.5 BrPM. Today's respiration range is 0.0 to 0.0.", "{\"RespRate\""},
    };
    HandleSleepMetrics handler(device);
    for (const Row& row : rows) {
        const auto answer = (handler.*row.answer)();
        EXPECT_EQ(answer->size(), 2U) << row.name;
        EXPECT_EQ(shown(answer, "response"), row.sentence) << row.name;
        EXPECT_TRUE(shown(answer, "pasteItem").starts_with(row.summaryStart)) << row.name;
    }
    const TestDevice empty{{.languages = {"de"}, .translations = {{"No Data", "Keine Daten"}}}};
    for (const Row& row : rows) {
        HandleSleepMetrics withoutData(empty);
        EXPECT_EQ(shown((withoutData.*row.answer)()), (Shown{{"response", "Keine Daten"}})) << row.name;
    }
}

TEST(HandleSleepMetricsTest, DropsTheSummaryWithoutASentence) {
    TestDevice device{{.now = "2026-06-10T22:00:00+02:00"}};
    device.store({{"cachedSleepBankUpdate", date("2026-06-10T10:00:00+02:00")}});
    EXPECT_EQ(shown(GroupMetrics(device).returnPreviousSleepBank(), "latestBedLabel"), "missing");
    EXPECT_EQ(shown(HandleSleepMetrics(device).getLatestBedtimeInfo()), (Shown{{"response", "No Data"}}));
}

TEST(HandleSleepMetricsTest, ReadsSwitchesAndSettings) {
    TestDevice device;
    device.store({{"PasteSwitchOff3", true},
                  {"PasteSwitchOff4", false},
                  {"PasteSwitchOff-1", "yes"},
                  {"lunabrookConfig", Dictionary{{"requiredHours", 7.5}}}});
    HandleSleepMetrics handler(device);
    EXPECT_EQ(handler.getLunabrookConfigValueForKey("requiredHours"), 0.0F) << "the store is not open yet";
    EXPECT_FALSE(handler.shouldPasteForID(3));
    EXPECT_TRUE(handler.shouldPasteForID(4));
    EXPECT_TRUE(handler.shouldPasteForID(5));
    EXPECT_FALSE(handler.shouldPasteForID(-1));
    EXPECT_EQ(handler.getLunabrookConfigValueForKey("requiredHours"), 7.5F);
    EXPECT_EQ(handler.getLunabrookConfigValueForKey("none"), 0.0F);
}

TEST(HandleSleepMetricsTest, SaysOneDurationOfTheWatch) {
    TestDevice device;
    HandleSleepMetrics handler(device);
    const auto response = [&](std::string_view key, std::int64_t format, std::int64_t type) {
        return shown(handler.getSleepMetricForKey(key, format, type), "response");
    };
    EXPECT_EQ(response("deep", 0, 0), "No Data");
    device.store({{"watchTrackDict", Dictionary{{"deep", 5400}}}});
    EXPECT_EQ(response("deep", 0, 0), "Today you slept 1 hour, 30 minutes");
    EXPECT_EQ(response("none", 0, 0), "Today you slept 0 hours, 0 minutes");
    EXPECT_EQ(response("deep", 1, 0), "No Data");
    EXPECT_EQ(response("deep", 0, 1), "No Data");
}

// Every key of the store with one value of the wrong kind or size.
Dictionary hostileStore(const Value& value) {
    Dictionary record;
    for (const char* key : {"rawSynchTime",
                            "rawSleepTime",
                            "rawSleepBankTime",
                            "rawRingRating",
                            "rawRingValues",
                            "showStages",
                            "rawHRVVal",
                            "rawWakingVal",
                            "hrvAverage",
                            "hrvTodayVal",
                            "bpmAverage",
                            "bpmTodayVal",
                            "averageSpO2",
                            "minSpO2",
                            "maxSpO2",
                            "averageSpO27",
                            "averageRespRate",
                            "minRespRate",
                            "averageRespRate7",
                            "nightHour",
                            "requiredHours",
                            "minimumHours",
                            "maximumHours",
                            "WakeFixed3",
                            "WakeTime3",
                            "medianWake",
                            "averageWake",
                            "averageEfficiency",
                            "startDate",
                            "averageBedtime",
                            "prevAverageBedtime",
                            "wristTempScore",
                            "wristTempTodayValue",
                            "wristTempAverage28",
                            "20260610",
                            "20260609",
                            "bedTime",
                            "wakeTime",
                            "bankForecast"}) {
        record.emplace(key, value);
    }
    record.emplace("key", "20260610");
    record.emplace("wristTempKey", "20260610");
    Dictionary bank = record;
    for (const char* key : {"spO2Dict", "respRateDict", "readyDict", "octaneDict"}) {
        bank.emplace(key, record);
    }
    return {{"watchTrackDict", record},
            {"lunabrookConfig", record},
            {"bankDict", bank},
            {"cachedSleepBank", record},
            {"cachedSleepBankUpdate", date("2026-06-10T07:00:00+02:00")},
            {"readyStars", value},
            {"lastConsistency", value},
            {"sleepSessionStart", value},
            {"sleepSessionEnd", value},
            {"PasteSwitchOff0", value}};
}

void askEverything(const Device& device, const std::string& what) {
    GroupMetrics metrics(device);
    metrics.requestConsistencyDict();
    metrics.requestQualityForSwift();
    metrics.returnPreviousSleepBank();
    HandleSleepMetrics handler(device);
    for (const Answer answer : {&HandleSleepMetrics::getSleepRingsInfo, &HandleSleepMetrics::getLatestBedtimeInfo,
                                &HandleSleepMetrics::getReadinessInfo, &HandleSleepMetrics::getOctaneInfo,
                                &HandleSleepMetrics::getSpO2Info, &HandleSleepMetrics::getWristTempInfo,
                                &HandleSleepMetrics::getRespirationInfo, &HandleSleepMetrics::getSleepBankInfo}) {
        EXPECT_NE(shown((handler.*answer)(), "response"), "missing") << what;
    }
    handler.shouldPasteForID(0);
    EXPECT_NE(shown(handler.getSleepMetricForKey("rawSleepTime", 0, 0), "response"), "missing") << what;
    EXPECT_EQ(shown(HandleLightsOff(device).turnLightsOff(), "response"), "Good Night") << what;
}

TEST(HandleSleepMetricsTest, AnswersWhateverTheStoreHolds) {
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<const char*, Value> values[] = {
        {"nan", std::nan("")},
        {"infinity", infinity},
        {"minus_infinity", -infinity},
        {"huge", 1e308},
        {"tiny", 1e-308},
        {"largest_integer", std::numeric_limits<std::int64_t>::max()},
        {"smallest_integer", std::numeric_limits<std::int64_t>::min()},
        {"zero", 0},
        {"negative_hour", -3},
        {"fraction", 22.7},
        {"absurd_hour", 99},
        {"text", "%n%s%@|1e999|nan|"},
        {"truth", true},
        {"array", Array{1, "two"}},
        {"dictionary", Dictionary{{"key", 1}}},
        {"data", Data{0, 255}},
        {"endless_date", dateFromSecondsSince1970(infinity)},
        {"no_date", dateFromSecondsSince1970(std::nan(""))},
        {"far_date", dateFromSecondsSince1970(1e300)},
    };
    for (const auto& [name, value] : values) {
        for (const char* now : {"2026-06-10T08:30:00+02:00", "2026-06-10T22:30:00+02:00"}) {
            TestDevice device{{.now = now,
                               .languages = {"de"},
                               .translations = {{"Today's temperature is %@. %@ %@ baseline.", "%d %s %9$@ %@ %"},
                                                {"Try to be in bed by %@", "%n%@%@%.f"}}}};
            device.store(hostileStore(value));
            askEverything(device, name);
            // Once more with the hours and the watch in order, so that the numbers reach the arithmetic.
            Dictionary store = hostileStore(value);
            for (const char* key : {"watchTrackDict", "lunabrookConfig", "bankDict"}) {
                Dictionary record = *dictionaryForKey(store, key);
                record.insert_or_assign("nightHour", 21);
                record.insert_or_assign("rawSynchTime", device->now());
                store.insert_or_assign(key, record);
            }
            device.store(store);
            askEverything(device, name);
        }
    }
}

}  // namespace
}  // namespace lunabrook::test
