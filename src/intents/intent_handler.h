// The principal class: receives every intent, asks the answer layer, wraps the answer in the intent's response.
//
// The two answer objects are made when the first intent of their kind arrives and kept for the handler's life, so later
// intents share an open store. One intent at a time.

#pragma once

#include <memory>

#include "answers/handle_lights_off.h"
#include "answers/handle_sleep_metrics.h"
#include "intents/intent_handling.h"
#include "platform/device/device.h"
#include "platform/device/intents.h"

namespace lunabrook {

class IntentHandler : public INExtension,
                      public LightsOffIntentHandling,
                      public TimeAsleepIntentHandling,
                      public ReadinessIntentHandling,
                      public LatestBedtimeIntentHandling,
                      public SleepRingsIntentHandling,
                      public SleepSpO2IntentHandling,
                      public RespirationIntentHandling,
                      public SleepFuelIntentHandling,
                      public WristTempIntentHandling {
public:
    explicit IntentHandler(const Device& device) : device_(device) {}

    // The handler itself, for an intent of any class.
    INExtension& handlerForIntent(const INIntent& intent) override;

    void handleLightsOff(const LightsOffIntent&, const Completion<LightsOffIntentResponse>&) override;
    void handleTimeAsleep(const TimeAsleepIntent&, const Completion<TimeAsleepIntentResponse>&) override;
    void handleReadiness(const ReadinessIntent&, const Completion<ReadinessIntentResponse>&) override;
    void handleLatestBedtime(const LatestBedtimeIntent&, const Completion<LatestBedtimeIntentResponse>&) override;
    void handleSleepRings(const SleepRingsIntent&, const Completion<SleepRingsIntentResponse>&) override;
    void handleSleepSpO2(const SleepSpO2Intent&, const Completion<SleepSpO2IntentResponse>&) override;
    void handleRespiration(const RespirationIntent&, const Completion<RespirationIntentResponse>&) override;
    void handleSleepFuel(const SleepFuelIntent&, const Completion<SleepFuelIntentResponse>&) override;
    void handleWristTemp(const WristTempIntent&, const Completion<WristTempIntentResponse>&) override;

protected:
    // How the answer objects are made; a test puts its own in their place.
    virtual std::unique_ptr<HandleLightsOff> makeHandleLightsOff() const;
    virtual std::unique_ptr<HandleSleepMetrics> makeHandleSleepMetrics() const;

private:
    using Answer = std::optional<Dictionary> (HandleSleepMetrics::*)();
    template <class Response>
    void completeWithMetric(Answer answer, const Completion<Response>& completion);

    const Device& device_;
    std::unique_ptr<HandleLightsOff> handleLightsOff_;
    std::unique_ptr<HandleSleepMetrics> handleSleepMetrics_;
};

}  // namespace lunabrook
