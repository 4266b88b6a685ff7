#include "command/demo_week.h"

#include <array>
#include <string>

#include "metrics/store_keys.h"
#include "platform/text/string_format.h"
#include "timekit/format_tools.h"

namespace lunabrook {

namespace {

constexpr double kMinuteSeconds = 60;
constexpr double kGoalHours = 7.75;
constexpr double kEfficiencyPercent = 91;

// Seconds slept on seven days, oldest first; the last is last night.
constexpr std::array<double, 7> kSlept = {26100, 28500, 24900, 27600, 29400, 26700, 27300};

constexpr double kRemSeconds = 5640;
constexpr double kRemGoalSeconds = 6000;
constexpr double kDeepSeconds = 4680;
constexpr double kDeepGoalSeconds = 4500;
constexpr double kSleepingBpm = 54;
constexpr double kSleepingBpmGoal = 56;

// When the made-up sleeper's days begin, wake and go to bed.
struct Night {
    std::int64_t nightHour = 0;
    Date start;  // of the sleep day
    Date wake;
    Date bed;
};

// Wakes at 06:48 this morning; before that hour, ten minutes ago. In the evening the sleep day must still be this
// morning's for the records to be of the report day, so there the day begins at midnight.
Night lastNight(const Device& device, FormatTools& tools) {
    constexpr std::int64_t kEveningHour = 21;
    constexpr std::int64_t kWakeHour = 6;
    constexpr std::int64_t kWakeMinute = 48;
    const Date now = device.now();
    Night night;
    night.wake = tools.dateForDate(now, kWakeHour, kWakeMinute).value_or(now);
    if (night.wake > now) {
        night.wake = dateByAddingSeconds(now, -10 * kMinuteSeconds);
    }
    const bool isEvening = tools.currentHour(now) >= kEveningHour;
    night.nightHour = isEvening ? 0 : kEveningHour;
    const Date startDay = isEvening ? now : dateByAddingSeconds(now, -kDaySeconds);
    night.start = tools.dateForDate(startDay, night.nightHour, 0).value_or(now);
    night.bed = dateByAddingSeconds(night.wake, -kSlept.back() * 100 / kEfficiencyPercent);
    return night;
}

// The bank's balance: later days weigh more.
double weightedSleep() {
    double sum = 0;
    double weights = 0;
    for (std::size_t i = 0; i < kSlept.size(); ++i) {
        const auto weight = static_cast<double>(i + 1);
        sum += weight * kSlept.at(i);
        weights += weight;
    }
    return sum / weights;
}

Dictionary watchRecord(const Night& night) {
    const std::string fills = stringWithFormat(
        "%.4f|%.4f|%.4f",
        {kRemSeconds / kRemGoalSeconds, kDeepSeconds / kDeepGoalSeconds, kSleepingBpmGoal / kSleepingBpm});
    const std::string values = stringWithFormat("%.0f|%.0f|%.0f", {kRemSeconds, kDeepSeconds, kSleepingBpm});
    return {
        {"rawSynchTime", dateByAddingSeconds(night.wake, 5 * kMinuteSeconds)},
        {"rawSleepTime", kSlept.back()},
        {"rawSleepBankTime", weightedSleep()},
        {"rawRingRating", fills},
        {"rawRingValues", values},
        {"showStages", true},
        {"rawHRVVal", 58.0},
        {"rawWakingVal", 55.0},
    };
}

Dictionary bankRecord(const Night& night, FormatTools& tools) {
    const Date reportDay = dateByAddingSeconds(night.start, FormatTools::kHalfDaySeconds);
    const std::string today = tools.YYMMDD(reportDay).value_or("");
    Dictionary bank{
        {"nightHour", night.nightHour},
        {"requiredHours", kGoalHours},
        {"medianWake", secondsFrom(night.start, night.wake)},
        {"averageEfficiency", kEfficiencyPercent},
        {"startDate", night.start},
        {"averageBedtime", secondsFrom(night.start, night.bed)},
        {"prevAverageBedtime", secondsFrom(night.start, night.bed) + 17 * kMinuteSeconds},
        {"wristTempKey", today},
        {"wristTempScore", 0.82},
        {"wristTempTodayValue", 34.62},
        {"wristTempAverage28", 34.48},
        {"readyDict",
         Dictionary{
             {"key", today}, {"hrvAverage", 52.0}, {"hrvTodayVal", 58.0}, {"bpmAverage", 57.0}, {"bpmTodayVal", 55.0}}},
        {"octaneDict", Dictionary{{"key", today},
                                  {"hrvAverage", 57.0},
                                  {"hrvTodayVal", 61.0},
                                  {"bpmAverage", 55.0},
                                  {"bpmTodayVal", kSleepingBpm}}},
        {"spO2Dict", Dictionary{{"key", today},
                                {"averageSpO2", 96.2},
                                {"minSpO2", 92.0},
                                {"maxSpO2", 99.0},
                                {"averageSpO27", 95.8},
                                {"minSpO27", 90.0},
                                {"maxSpO27", 99.0}}},
        {"respRateDict", Dictionary{{"key", today},
                                    {"averageRespRate", 14.4},
                                    {"minRespRate", 12.1},
                                    {"maxRespRate", 17.6},
                                    {"averageRespRate7", 14.8},
                                    {"minRespRate7", 11.9},
                                    {"maxRespRate7", 18.2}}},
    };
    for (std::size_t i = 0; i < kSlept.size(); ++i) {
        const double daysBack = static_cast<double>(kSlept.size() - 1 - i);
        if (const auto key = tools.YYMMDD(dateByAddingSeconds(reportDay, -daysBack * kDaySeconds))) {
            bank.insert_or_assign(*key, kSlept.at(i));
        }
    }
    return bank;
}

}  // namespace

Dictionary demoWeek(const Device& device) {
    FormatTools tools(device);
    const Night night = lastNight(device, tools);
    return {
        {std::string(kWatchTrackDict), watchRecord(night)},
        {std::string(kBankDict), bankRecord(night, tools)},
        {std::string(kLunabrookConfig), Dictionary{{"nightHour", night.nightHour},
                                                   {"requiredHours", kGoalHours},
                                                   {"minimumHours", 7.0},
                                                   {"maximumHours", 9.5}}},
        {"sleepSessionStart", night.bed},
        {"sleepSessionEnd", night.wake},
    };
}

}  // namespace lunabrook
