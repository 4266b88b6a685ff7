#include "platform/device/user_defaults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "platform/files/property_list.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

using test::readFile;
using test::TestDevice;
using test::writeFile;
using testing::HasSubstr;

constexpr const char* kSuite = "group.kestrovan.Lunabrook";

const char* const kXmlStore =
    "<plist><dict><key>name</key><string>x</string><key>bank</key><dict><key>a</key><real>1.5</real></dict></dict></"
    "plist>";

// What another program does: it writes a new file over the old one.
void replaceFile(const std::filesystem::path& file, const std::string& bytes) {
    writeFile(file.string() + ".other", bytes);
    std::filesystem::rename(file.string() + ".other", file);
}

TEST(UserDefaults, MissingStoreIsEmptyAndWritesMakeItPrivate) {
    TestDevice device;
    UserDefaults defaults(device, kSuite);
    EXPECT_EQ(defaults.objectForKey("name"), nullptr);
    EXPECT_TRUE(defaults.contents()->empty());
    EXPECT_TRUE(defaults.setObject("name", "x"));
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(*defaults.objectForKey("name"), Value("x"));
    EXPECT_EQ(std::filesystem::status(device.storeFile()).permissions(), std::filesystem::perms(0600));
    EXPECT_TRUE(device.faults().empty());
}

TEST(UserDefaults, SeesWhatOthersWroteWhileHeldValuesStay) {
    TestDevice device;
    writeFile(device.storeFile(), kXmlStore);
    const UserDefaults defaults(device, kSuite);
    const auto bank = defaults.dictionaryForKey("bank");
    EXPECT_EQ(floatForKey(*bank, "a", 0), 1.5F);
    EXPECT_EQ(defaults.dictionaryForKey("bank").get(), bank.get());  // unchanged: not loaded again
    EXPECT_EQ(defaults.dictionaryForKey("name"), nullptr);

    replaceFile(device.storeFile(), "<plist><dict><key>bank</key><string>gone</string></dict></plist>");
    EXPECT_EQ(defaults.dictionaryForKey("bank"), nullptr);
    EXPECT_EQ(*defaults.objectForKey("bank"), Value("gone"));
    EXPECT_EQ(floatForKey(*bank, "a", 0), 1.5F);

    std::filesystem::remove(device.storeFile());
    EXPECT_TRUE(defaults.contents()->empty());
}

TEST(UserDefaults, TransactionChangesItsKeysAloneAndALinkStaysALink) {
    TestDevice device;
    const std::filesystem::path linked = device.folder() / "real.plist";
    writeFile(linked, kXmlStore);
    std::filesystem::create_directories(device->preferences());
    std::filesystem::create_symlink(linked, device.storeFile());
    UserDefaults defaults(device, kSuite);
    EXPECT_TRUE(defaults.setObjects({{"name", std::nullopt}, {"added", Value(true)}, {"never", std::nullopt}}));
    EXPECT_EQ(device.stored(), (Dictionary{{"added", true}, {"bank", Dictionary{{"a", 1.5}}}}));
    EXPECT_TRUE(std::filesystem::is_symlink(device.storeFile()));
    EXPECT_TRUE(readFile(linked).starts_with("bplist00"));
}

TEST(UserDefaults, DamagedStoreReadsEmptyRefusesWritesAndStaysAsItIs) {
    for (const std::string damaged : {"", "rubbish", "<plist><array/></plist>", "bplist00 cut"}) {
        TestDevice device;
        writeFile(device.storeFile(), damaged);
        UserDefaults defaults(device, kSuite);
        EXPECT_TRUE(defaults.contents()->empty()) << damaged;
        EXPECT_TRUE(defaults.contents()->empty()) << damaged;
        ASSERT_EQ(device.faults().size(), 1U) << "told once: " << damaged;
        EXPECT_EQ(device.faults().front().file, device.storeFile());
        EXPECT_THAT(device.faults().front().what, HasSubstr("reads as empty"));
        EXPECT_FALSE(defaults.setObject("name", "x")) << damaged;
        EXPECT_THAT(device.faults().back().what, HasSubstr("nothing was written"));
        EXPECT_EQ(readFile(device.storeFile()), damaged);
    }
}

TEST(UserDefaults, FolderInPlaceOfTheStoreOrFileInPlaceOfItsFolderIsAFault) {
    TestDevice device, unmakeable;
    std::filesystem::create_directories(device.storeFile());
    writeFile(unmakeable->preferences(), "a file where the folder should be");
    for (const TestDevice* each : {&device, &unmakeable}) {
        UserDefaults defaults(*each, kSuite);
        EXPECT_TRUE(defaults.contents()->empty());
        EXPECT_EQ(each->faults().size(), each == &device ? 1U : 0U);
        EXPECT_FALSE(defaults.setObject("name", "x"));
    }
    EXPECT_EQ(device.faults().size(), 2U);
    EXPECT_THAT(unmakeable.faults().at(0).what, HasSubstr("cannot be written"));
}

TEST(UserDefaults, QuestionDropsItsWrites) {
    TestDevice device(TestDevice::Options{.dropsWrites = true});
    writeFile(device.storeFile(), kXmlStore);
    UserDefaults defaults(device, kSuite);
    EXPECT_TRUE(defaults.setObject("name", "y"));
    EXPECT_EQ(readFile(device.storeFile()), kXmlStore);
    EXPECT_FALSE(std::filesystem::exists(device.storeFile().string() + ".lock"));
}

}  // namespace
}  // namespace lunabrook
