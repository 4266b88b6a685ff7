#include "platform/files/private/suite_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <thread>

#include "support/test_device.h"

namespace lunabrook {
namespace {

namespace fs = std::filesystem;
using test::readFile;
using test::writeFile;
using testing::HasSubstr;
using Change = SuiteFile::Change;

const auto kSetNew = [](PropertyList& list) { list.set("new", true); };
const char* const kStore = "<plist><dict><key>old</key><true/></dict></plist>";

class SuiteFileTest : public testing::Test {
protected:
    fs::path path(const std::string& name) const { return folder_.path() / name; }
    SuiteFile suite(const std::string& name) {
        return {path(name), false, [this](const Fault& fault) { faults_.push_back(fault.what); },
                std::chrono::milliseconds(20)};
    }

    test::TemporaryFolder folder_;
    std::vector<std::string> faults_;
};

// Each name once took a lock of its own and the same temporary file.
TEST_F(SuiteFileTest, EveryNameOfAStoreTakesTheLockBesideIt) {
    fs::create_directory(path("real"));
    fs::create_symlink("real/store.plist", path("first.plist"));
    fs::create_symlink(path("first.plist"), path("second.plist"));
    EXPECT_EQ(suite("first.plist").change(kSetNew), Change::written) << "the target of a dangling link is made";
    EXPECT_TRUE(fs::is_symlink(path("first.plist")));
    EXPECT_TRUE(fs::is_regular_file(path("real/store.plist")));
    EXPECT_FALSE(fs::exists(path("first.plist.lock")));

    const FileDescriptor other(path("real/store.plist.lock"), O_RDWR);
    ASSERT_EQ(flock(other.number(), LOCK_EX), 0);
    EXPECT_EQ(suite("second.plist").change(kSetNew), Change::failed);
    EXPECT_THAT(faults_, testing::ElementsAre(HasSubstr("cannot be locked, so nothing was written: process " +
                                                        std::to_string(getpid()) + " has held the lock")));
}

// Who was given up stands in the system's queue until the holder lets go.
TEST_F(SuiteFileTest, AFewThreadsWaitForAStoppedHolderHoweverOftenItIsAsked) {
    const auto threads = [] { return std::distance(fs::directory_iterator("/proc/self/task"), {}); };
    writeFile(path("store.plist.lock"), "");
    FileDescriptor holder(path("store.plist.lock"), O_RDWR);
    ASSERT_EQ(flock(holder.number(), LOCK_EX), 0);
    const auto before = threads();
    for (int i = 0; i < 30; ++i) {
        EXPECT_EQ(suite("store.plist").change(kSetNew), Change::failed);
    }
    EXPECT_LE(threads(), before + 8);
    holder.close();
    EXPECT_EQ(suite("store.plist").change(kSetNew), Change::written);
}

TEST_F(SuiteFileTest, WhatLiesInTheWayIsNeitherFollowedNorWrittenInto) {
    const struct {
        const char *name, *where;
        void (*put)(const fs::path& where, const fs::path& other);
        Change change;
    } rows[] = {
        {"left_by_a_killed_writer", ".new", [](const fs::path& where, const fs::path&) { writeFile(where, "half"); },
         Change::written},
        {"pipe", ".new", [](const fs::path& where, const fs::path&) { mkfifo(where.c_str(), 0600); }, Change::written},
        {"hard_link", ".new", [](const fs::path& where, const fs::path& other) { fs::create_hard_link(other, where); },
         Change::written},
        {"link", ".new", [](const fs::path& where, const fs::path& other) { fs::create_symlink(other, where); },
         Change::written},
        {"dangling_link_as_lock", ".lock",
         [](const fs::path& where, const fs::path& other) { fs::create_symlink(other.string() + ".made", where); },
         Change::failed},
        {"pipe_as_lock", ".lock", [](const fs::path& where, const fs::path&) { mkfifo(where.c_str(), 0600); },
         Change::written},
        {"folder", ".new", [](const fs::path& where, const fs::path&) { fs::create_directory(where); }, Change::failed},
    };
    for (const auto& row : rows) {
        const std::string name = std::string(row.name) + ".plist";
        writeFile(path("other"), "another program's");
        writeFile(path(name), kStore);
        row.put(path(name + row.where), path("other"));
        EXPECT_EQ(suite(name).change(kSetNew), row.change) << row.name;
        EXPECT_EQ(suite(name).snapshot()->size(), row.change == Change::written ? 2U : 1U) << row.name;
        EXPECT_EQ(readFile(path("other")), "another program's") << row.name;
        EXPECT_FALSE(fs::exists(path("other.made"))) << row.name;
        EXPECT_EQ(fs::exists(path(name + ".new")), std::string("folder") == row.name) << row.name;
    }
}

TEST_F(SuiteFileTest, OwnerAndModeOfAStoreStay) {
    constexpr uid_t kOwner = 1234;
    const bool isRoot = geteuid() == 0;
    writeFile(path("store.plist"), kStore);
    fs::permissions(path("store.plist"), fs::perms(0640));
    ASSERT_TRUE(!isRoot || chown(path("store.plist").c_str(), kOwner, kOwner) == 0);
    EXPECT_EQ(suite("store.plist").change(kSetNew), Change::written);
    for (const char* name : {"store.plist", "store.plist.lock"}) {
        struct stat status = {};
        ASSERT_EQ(stat(path(name).c_str(), &status), 0);
        EXPECT_EQ(status.st_uid, isRoot ? kOwner : geteuid()) << name;
        EXPECT_EQ(status.st_mode & 0777, std::string(name).ends_with("lock") ? 0600 : 0640) << name;
    }
}

TEST_F(SuiteFileTest, WhatRootMakesBelongsToWhomTheFolderAboveBelongsTo) {
    constexpr uid_t kOwner = 1234;
    if (geteuid() != 0) {
        GTEST_SKIP() << "nobody else may give files away";
    }
    ASSERT_EQ(chown(path("").c_str(), kOwner, kOwner), 0);
    EXPECT_EQ(suite("a/b/store.plist").change(kSetNew), Change::written);
    for (const char* name : {"a", "a/b", "a/b/store.plist", "a/b/store.plist.lock"}) {
        struct stat status = {};
        ASSERT_EQ(stat(path(name).c_str(), &status), 0);
        EXPECT_EQ(status.st_uid, kOwner) << name;
    }
}

TEST_F(SuiteFileTest, FolderIsPrivateWhateverTheMask) {
    for (const mode_t mask : {0000U, 0777U}) {
        const std::string name = "mask" + std::to_string(mask);
        const mode_t before = umask(mask);
        EXPECT_EQ(suite(name + "/inner/store.plist").change(kSetNew), Change::written);
        umask(before);
        EXPECT_EQ(fs::status(path(name)).permissions(), fs::perms(0700));
        EXPECT_EQ(fs::status(path(name) / "inner").permissions(), fs::perms(0700));
    }
}

// It was once read as empty between the two steps of a writer without the lock.
TEST_F(SuiteFileTest, WaitsForAWriterInPlace) {
    writeFile(path("store.plist"), "");
    std::ofstream stream(path("store.plist"), std::ios::binary);
    std::thread writer([&stream] {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        stream << kStore << std::flush;
    });
    EXPECT_EQ(suite("store.plist").snapshot()->size(), 1U);
    writer.join();
    EXPECT_TRUE(faults_.empty());
}

// A store that appeared right behind a look for it was once remembered as empty.
TEST_F(SuiteFileTest, SeesAStoreThatAppearsWhileItLooks) {
    for (int round = 0; round < 100; ++round) {
        writeFile(path("made"), kStore);
        fs::remove(path("store.plist"));
        std::thread writer([this] { fs::rename(path("made"), path("store.plist")); });
        for (bool isThere = false; !isThere;) {
            SuiteFile store = suite("store.plist");
            store.snapshot();
            isThere = fs::exists(path("store.plist"));
            EXPECT_TRUE(store.snapshot()->contains("old") || !isThere);
        }
        writer.join();
    }
}

TEST_F(SuiteFileTest, MakesANewStoreOnlyWhereNoneIs) {
    const auto may = [](bool go) { return [go](const Dictionary& there) { return go && there.contains("new"); }; };
    const auto setNewer = [](PropertyList& list) { list.set("newer", true); };
    EXPECT_EQ(suite("store.plist").change(kSetNew, may(false)), Change::written);
    EXPECT_EQ(suite("store.plist").change(setNewer, may(false)), Change::wasThere);
    EXPECT_EQ(*suite("store.plist").snapshot(), (Dictionary{{"new", true}}));
    EXPECT_EQ(suite("store.plist").change(setNewer, may(true)), Change::written);
    EXPECT_EQ(*suite("store.plist").snapshot(), (Dictionary{{"newer", true}}));
    writeFile(path("store.plist"), "damaged");
    EXPECT_EQ(suite("store.plist").change(setNewer, may(true)), Change::wasThere);
    EXPECT_TRUE(faults_.empty());
}

}  // namespace
}  // namespace lunabrook
