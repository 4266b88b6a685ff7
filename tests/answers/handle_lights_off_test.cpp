#include "answers/handle_lights_off.h"

#include <gtest/gtest.h>

#include "support/shown.h"
#include "support/test_device.h"

namespace lunabrook::test {
namespace {

TEST(HandleLightsOffTest, NotesTheLastMomentAndSaysGoodNight) {
    TestDevice device{{.now = "2026-06-10T22:45:30.250+02:00"}};
    device.store({{"other", 1}, {"activeLightSwitch", "earlier"}});
    HandleLightsOff lights(device);
    EXPECT_EQ(shown(lights.turnLightsOff()),
              "response: Good Night | statusLabel: 💤 In bed at 10:45\u202FPM.\nOpen app to cancel.");
    EXPECT_EQ(shown(device.stored()), "activeLightSwitch: @2026-06-10T20:45:30.250Z | other: #1");
    device.setNow("2026-06-11T00:05:00+02:00");
    EXPECT_EQ(shown(lights.turnLightsOff(), {"statusLabel"}), "💤 In bed at 12:05\u202FAM.\nOpen app to cancel.");
    EXPECT_EQ(shown(device.stored()), "activeLightSwitch: @2026-06-10T22:05:00.000Z | other: #1");
}

// A link to itself can be neither written nor put on the disk: two faults, whose second one tells that it was tried.
TEST(HandleLightsOffTest, PutsTheMomentOnTheDiskAtOnce) {
    const TestDevice device;
    std::filesystem::create_directories(device->preferences());
    std::filesystem::create_symlink(device.storeFile(), device.storeFile());
    EXPECT_EQ(shown(HandleLightsOff(device).turnLightsOff(), {"response"}), "Good Night");
    ASSERT_EQ(device.faults().size(), 2U);
    EXPECT_NE(device.faults().back().what.find("cannot be put on the disk"), std::string::npos);
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
