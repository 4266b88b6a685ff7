// The nine handling protocols: an intent and a completion that takes one response of the matching class.

#pragma once

#include <functional>

#include "intents/intent_responses.h"
#include "intents/intents.h"

namespace lunabrook {

// Called exactly once, before the handle operation returns.
template <class Response>
using Completion = std::function<void(const Response&)>;

class LightsOffIntentHandling {
public:
    virtual ~LightsOffIntentHandling() = default;
    virtual void handleLightsOff(const LightsOffIntent& intent,
                                 const Completion<LightsOffIntentResponse>& completion) = 0;
};

class TimeAsleepIntentHandling {
public:
    virtual ~TimeAsleepIntentHandling() = default;
    virtual void handleTimeAsleep(const TimeAsleepIntent& intent,
                                  const Completion<TimeAsleepIntentResponse>& completion) = 0;
};

class ReadinessIntentHandling {
public:
    virtual ~ReadinessIntentHandling() = default;
    virtual void handleReadiness(const ReadinessIntent& intent,
                                 const Completion<ReadinessIntentResponse>& completion) = 0;
};

class LatestBedtimeIntentHandling {
public:
    virtual ~LatestBedtimeIntentHandling() = default;
    virtual void handleLatestBedtime(const LatestBedtimeIntent& intent,
                                     const Completion<LatestBedtimeIntentResponse>& completion) = 0;
};

class SleepRingsIntentHandling {
public:
    virtual ~SleepRingsIntentHandling() = default;
    virtual void handleSleepRings(const SleepRingsIntent& intent,
                                  const Completion<SleepRingsIntentResponse>& completion) = 0;
};

class SleepSpO2IntentHandling {
public:
    virtual ~SleepSpO2IntentHandling() = default;
    virtual void handleSleepSpO2(const SleepSpO2Intent& intent,
                                 const Completion<SleepSpO2IntentResponse>& completion) = 0;
};

class RespirationIntentHandling {
public:
    virtual ~RespirationIntentHandling() = default;
    virtual void handleRespiration(const RespirationIntent& intent,
                                   const Completion<RespirationIntentResponse>& completion) = 0;
};

class SleepFuelIntentHandling {
public:
    virtual ~SleepFuelIntentHandling() = default;
    virtual void handleSleepFuel(const SleepFuelIntent& intent,
                                 const Completion<SleepFuelIntentResponse>& completion) = 0;
};

class WristTempIntentHandling {
public:
    virtual ~WristTempIntentHandling() = default;
    virtual void handleWristTemp(const WristTempIntent& intent,
                                 const Completion<WristTempIntentResponse>& completion) = 0;
};

}  // namespace lunabrook
