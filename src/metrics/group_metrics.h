// The metrics: store -> result dictionary, one request and one .cpp for each.
//
// A request reads the store and the clock afresh and returns a new dictionary (labels, values, a spoken sentence and a
// copyable summary), or nil when the report day has no data. The night hour decides the day: a sleep day begins at the
// latest night-hour o'clock that is not in the future, and is filed under the day twelve hours later.

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "metrics/result_keys.h"
#include "platform/device/device.h"
#include "platform/device/user_defaults.h"
#include "platform/values/value.h"
#include "timekit/format_tools.h"

namespace lunabrook {

struct NightlyAverage;

class GroupMetrics {
public:
    explicit GroupMetrics(const Device& device) : device_(device) {}

    std::optional<Dictionary> requestQuality();
    std::optional<Dictionary> requestSpO2();
    std::optional<Dictionary> requestRespRate();
    std::optional<Dictionary> requestWristTemp();
    std::optional<Dictionary> requestReadiness();
    std::optional<Dictionary> requestOctane();
    std::optional<Dictionary> requestConsistencyDict();
    std::optional<Dictionary> requestSleepBank();
    // The cached sleep bank, moved on by one day; nil when the cache is not of the previous sleep day.
    std::optional<Dictionary> returnPreviousSleepBank();

    // Mirrors the ring labels into the store for readers that do not compute them.
    void requestQualityForSwift();

    // -1 when the setting is missing, or while no request has opened the store.
    float getLunabrookConfigValueForKey(std::string_view key) const;
    // Whether the setting is there, whatever its value: a stored NO counts as YES.
    bool getLunabrookSwitchValueForKey(std::string_view key) const;

    // Whether the night hour has struck since midnight. Opens nothing: before the first request it is false.
    bool shouldReportPreviousDay();
    // The latest `nightHour` o'clock that is not in the future. Nil for a negative hour.
    std::optional<Date> getFromDateForNightHour(std::int64_t nightHour);
    // A moment of the day under which the current sleep day is filed, by the bank's night hour. Nil for a negative one.
    std::optional<Date> reportDay();
    // Whether the watch's record was synchronised more than a minute after the start of the sleep day.
    bool watchDictIsValid();

private:
    // What every request begins with.
    void openStoreAndTools();
    // Of the settings and of "bankDict", both 21 when missing: two hours that are kept apart on purpose.
    std::int64_t configuredNightHour() const;
    static std::int64_t nightHourOfBank(const Dictionary& bank);
    // Null unless there is a watch record and it is valid.
    std::shared_ptr<const Dictionary> validWatchRecord();
    std::optional<Date> morningOfNight(std::int64_t nightHour);
    // Whether `dayKey` names the day under which the current sleep day is filed. False for a null.
    bool isReportDay(const Dictionary& bank, const std::string* dayKey);
    // A sub-record of "bankDict" whose "key" names the report day; null otherwise. Opens store and tools.
    std::shared_ptr<const Dictionary> reportDayRecord(std::string_view name);
    std::optional<Dictionary> requestNightlyAverage(const NightlyAverage& metric);
    // Adds tonight's bedtime, sentence and summary to a sleep bank; the usual wake time unless one is fixed.
    void planTonight(Dictionary& result, const Dictionary& bank, const std::optional<Date>& fixedWake);

    const Device& device_;
    std::unique_ptr<UserDefaults> groupPrefs_;
    std::unique_ptr<FormatTools> formatTools_;
};

}  // namespace lunabrook
