// The eight metric answers: result dictionary -> answer dictionary with "response" and, where there is one,
// "pasteItem".

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "answers/answer_keys.h"
#include "metrics/group_metrics.h"
#include "platform/device/device.h"
#include "platform/device/user_defaults.h"
#include "platform/values/value.h"
#include "timekit/format_tools.h"

namespace lunabrook {

// A fragment of two sentences; its blank at the end doubles the one that follows, which is then collapsed.
inline constexpr std::string_view kTodayYouSlept = "Today you slept ";

class HandleSleepMetrics {
public:
    explicit HandleSleepMetrics(const Device& device) : device_(device) {}
    virtual ~HandleSleepMetrics() = default;

    // The caller treats nil as a failure; these always answer, at worst with the localised "No Data".
    virtual std::optional<Dictionary> getSleepRingsInfo();
    virtual std::optional<Dictionary> getLatestBedtimeInfo();
    virtual std::optional<Dictionary> getReadinessInfo();
    virtual std::optional<Dictionary> getOctaneInfo();
    virtual std::optional<Dictionary> getSpO2Info();
    virtual std::optional<Dictionary> getWristTempInfo();
    virtual std::optional<Dictionary> getRespirationInfo();
    // Time asleep, and the bank's debt or credit.
    virtual std::optional<Dictionary> getSleepBankInfo();

    // Whether the summary of this answer may be passed on; the answers themselves never ask.
    bool shouldPasteForID(std::int32_t identifier);
    // A sentence about one duration of the watch's record. Only format 0 with type 0 has one.
    std::optional<Dictionary> getSleepMetricForKey(std::string_view key, std::int64_t format, std::int64_t type);
    // 0 when missing (GroupMetrics' reader gives -1: meant), or while nothing has opened the store.
    float getLunabrookConfigValueForKey(std::string_view key) const;

private:
    using Request = std::optional<Dictionary> (GroupMetrics::*)();
    Dictionary metricAnswer(Request request, std::string_view spokenKey);
    Dictionary noDataAnswer() const;
    void openStore();
    void openStoreAndTools();

    const Device& device_;
    std::unique_ptr<UserDefaults> groupPrefs_;
    std::unique_ptr<FormatTools> formatTools_;
    std::unique_ptr<GroupMetrics> groupMetrics_;
};

}  // namespace lunabrook
