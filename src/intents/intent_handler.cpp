#include "intents/intent_handler.h"

namespace lunabrook {

namespace {

std::optional<std::string> textForKey(const Dictionary& answer, std::string_view key) {
    const std::string* text = stringForKey(answer, key);
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

template <class Response>
void completeWithFailure(const Completion<Response>& completion) {
    completion(Response::initWithCode(IntentResponseCode::failure, nullptr));
}

}  // namespace

INExtension& IntentHandler::handlerForIntent(const INIntent&) { return *this; }

std::unique_ptr<HandleLightsOff> IntentHandler::makeHandleLightsOff() const {
    return std::make_unique<HandleLightsOff>(device_);
}

std::unique_ptr<HandleSleepMetrics> IntentHandler::makeHandleSleepMetrics() const {
    return std::make_unique<HandleSleepMetrics>(device_);
}

template <class Response>
void IntentHandler::completeWithMetric(Answer answerOperation, const Completion<Response>& completion) {
    if (!handleSleepMetrics_) {
        handleSleepMetrics_ = makeHandleSleepMetrics();
    }
    const std::optional<Dictionary> answer = (*handleSleepMetrics_.*answerOperation)();
    if (!answer) {
        return completeWithFailure(completion);
    }
    Response response = Response::successIntentResponseWithResponse(textForKey(*answer, kResponse));
    response.dictionary = textForKey(*answer, kPasteItem);
    completion(response);
}

// Differs from the metrics on purpose: a summary in the answer is never read.
void IntentHandler::handleLightsOff(const LightsOffIntent&, const Completion<LightsOffIntentResponse>& completion) {
    if (!handleLightsOff_) {
        handleLightsOff_ = makeHandleLightsOff();
    }
    const std::optional<Dictionary> answer = handleLightsOff_->turnLightsOff();
    if (!answer) {
        return completeWithFailure(completion);
    }
    completion(LightsOffIntentResponse::successIntentResponseWithResponse(textForKey(*answer, kResponse)));
}

// Time asleep is answered by the sleep bank's operation and sleep fuel by the octane's: meant.
void IntentHandler::handleTimeAsleep(const TimeAsleepIntent&, const Completion<TimeAsleepIntentResponse>& completion) {
    completeWithMetric(&HandleSleepMetrics::getSleepBankInfo, completion);
}

void IntentHandler::handleReadiness(const ReadinessIntent&, const Completion<ReadinessIntentResponse>& completion) {
    completeWithMetric(&HandleSleepMetrics::getReadinessInfo, completion);
}

void IntentHandler::handleLatestBedtime(const LatestBedtimeIntent&,
                                        const Completion<LatestBedtimeIntentResponse>& completion) {
    completeWithMetric(&HandleSleepMetrics::getLatestBedtimeInfo, completion);
}

void IntentHandler::handleSleepRings(const SleepRingsIntent&, const Completion<SleepRingsIntentResponse>& completion) {
    completeWithMetric(&HandleSleepMetrics::getSleepRingsInfo, completion);
}

void IntentHandler::handleSleepSpO2(const SleepSpO2Intent&, const Completion<SleepSpO2IntentResponse>& completion) {
    completeWithMetric(&HandleSleepMetrics::getSpO2Info, completion);
}

void IntentHandler::handleRespiration(const RespirationIntent&,
                                      const Completion<RespirationIntentResponse>& completion) {
    completeWithMetric(&HandleSleepMetrics::getRespirationInfo, completion);
}

void IntentHandler::handleSleepFuel(const SleepFuelIntent&, const Completion<SleepFuelIntentResponse>& completion) {
    completeWithMetric(&HandleSleepMetrics::getOctaneInfo, completion);
}

void IntentHandler::handleWristTemp(const WristTempIntent&, const Completion<WristTempIntentResponse>& completion) {
    completeWithMetric(&HandleSleepMetrics::getWristTempInfo, completion);
}

}  // namespace lunabrook
