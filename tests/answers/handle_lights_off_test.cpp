#include "answers/handle_lights_off.h"

#include <gtest/gtest.h>

#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

TEST(HandleLightsOffTest, NotesTheLastMomentAndSaysGoodNight) {
    TestDevice device{{.now = "2026-06-10T22:45:30.250+02:00"}};
    device.store({{"other", 1}, {"activeLightSwitch", "earlier"}});
    EXPECT_EQ(shown(HandleLightsOff(device).turnLightsOff()),
              "response: Good Night | statusLabel: 💤 In bed at 10:45\u202FPM.\nOpen app to cancel.");
    EXPECT_EQ(shown(device.stored()), "activeLightSwitch: @2026-06-10T20:45:30.250Z | other: #1");
}

TEST(HandleLightsOffTest, SpeaksGermanThoughTheStoreIsDamaged) {
    const TestDevice device{{.now = "2026-06-10T22:45:00+02:00",
                             .locale = "de_DE",
                             .languages = {"de"},
                             .translations = {{"💤 In bed at", "💤 Im Bett um"}, {"Good Night", "Gute Nacht"}}}};
    writeFile(device.storeFile(), "damaged");
    EXPECT_EQ(shown(HandleLightsOff(device).turnLightsOff()),
              "response: Gute Nacht | statusLabel: 💤 Im Bett um 22:45.\nOpen app to cancel.");
    EXPECT_EQ(readFile(device.storeFile()), "damaged");
    EXPECT_FALSE(device.faults().empty());
}

}  // namespace
}  // namespace lunabrook::test
