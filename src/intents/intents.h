// The nine intents: plain markers. Only an intent's class decides what is answered; nothing is read from it.

#pragma once

#include "platform/device/intents.h"

namespace lunabrook {

class LightsOffIntent : public INIntent {};
class TimeAsleepIntent : public INIntent {};
class ReadinessIntent : public INIntent {};
class LatestBedtimeIntent : public INIntent {};
class SleepRingsIntent : public INIntent {};
class SleepSpO2Intent : public INIntent {};
class RespirationIntent : public INIntent {};
class SleepFuelIntent : public INIntent {};
class WristTempIntent : public INIntent {};

}  // namespace lunabrook
