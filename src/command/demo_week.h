// A made-up week of sleep that ends this morning: every record that an intent reads.
//
// One night is the source of the rest: the ring fills follow from the seconds slept, the bank from the seven days, bed
// and wake times from the session.

#pragma once

#include "platform/device/device.h"
#include "platform/values/value.h"

namespace lunabrook {

// The keys of the shared store, for the device's clock, zone and locale.
Dictionary demoWeek(const Device& device);

}  // namespace lunabrook
