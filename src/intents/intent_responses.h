// The nine responses: a code, the spoken sentence and, for all but lights off, a copyable summary.
//
//   auto response = ReadinessIntentResponse::successIntentResponseWithResponse("Today's Readiness is great.");
//   response.code()  ->  IntentResponseCode::success

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/device/intents.h"

namespace lunabrook {

// The values are the platform's for custom responses; the system makes no others.
enum class IntentResponseCode : std::int64_t {
    success = 4,
    failure = 5,
};

// What all nine share; `Response` is the class that the operations make.
template <class Response>
class CodedIntentResponse : public INIntentResponse {
public:
    static Response initWithCode(IntentResponseCode code, std::shared_ptr<UserActivity> userActivity) {
        Response made;
        made.setCode(code);
        made.setUserActivity(std::move(userActivity));
        return made;
    }

    static Response successIntentResponseWithResponse(const std::optional<std::string>& sentence) {
        Response made = initWithCode(IntentResponseCode::success, nullptr);
        made.response = sentence;
        return made;
    }

    IntentResponseCode code() const { return code_; }
    void setCode(IntentResponseCode code) { code_ = code; }

    std::optional<std::string> response;  // what the assistant speaks and shows

private:
    IntentResponseCode code_ = {};
};

template <class Response>
class SummarizedIntentResponse : public CodedIntentResponse<Response> {
public:
    std::optional<std::string> dictionary;  // the copyable summary: a text, in spite of its name
};

// Lights off has no summary to copy.
class LightsOffIntentResponse : public CodedIntentResponse<LightsOffIntentResponse> {};
class TimeAsleepIntentResponse : public SummarizedIntentResponse<TimeAsleepIntentResponse> {};
class ReadinessIntentResponse : public SummarizedIntentResponse<ReadinessIntentResponse> {};
class LatestBedtimeIntentResponse : public SummarizedIntentResponse<LatestBedtimeIntentResponse> {};
class SleepRingsIntentResponse : public SummarizedIntentResponse<SleepRingsIntentResponse> {};
class SleepSpO2IntentResponse : public SummarizedIntentResponse<SleepSpO2IntentResponse> {};
class RespirationIntentResponse : public SummarizedIntentResponse<RespirationIntentResponse> {};
class SleepFuelIntentResponse : public SummarizedIntentResponse<SleepFuelIntentResponse> {};
class WristTempIntentResponse : public SummarizedIntentResponse<WristTempIntentResponse> {};

}  // namespace lunabrook
