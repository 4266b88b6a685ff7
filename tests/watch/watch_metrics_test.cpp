#include "watch/watch_metrics.h"

#include <gtest/gtest.h>

#include "platform/device/directory_watch_session.h"
#include "platform/files/property_list.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

using test::readFile;
using test::TemporaryFolder;
using test::writeFile;

// Completes when the test says so, and keeps what it was given.
class ScriptedSession : public WCSession, public WatchConnectivity {
public:
    bool isSupported() const override { return supported; }
    WCSession* defaultSession() override { return exists ? this : nullptr; }
    void setDelegate(WCSessionDelegate* newDelegate) override { current = newDelegate; }
    WCSessionDelegate* delegate() const override { return current; }
    void activateSession() override { ++activations; }
    bool isPaired() const override { return paired; }
    bool isWatchAppInstalled() const override { return installed; }
    std::optional<WCError> updateApplicationContext(const Dictionary& context) override {
        contexts.push_back(context);
        return updateError;
    }

    bool supported = true, exists = true, paired = true, installed = true;
    std::optional<WCError> updateError;
    WCSessionDelegate* current = nullptr;
    int activations = 0;
    std::vector<Dictionary> contexts;
};

const Dictionary kFirst{{"rating", "Good"}};
const Dictionary kSecond{{"rating", "Great"}};

TEST(WatchMetrics, PushesTheDictionaryOfTheMomentWhenActivationCompletes) {
    ScriptedSession session;
    WatchMetrics metrics(session);
    metrics.updateWatchContextWithDict(kFirst);
    metrics.updateWatchContextWithDict(kSecond);
    metrics.sessionDidBecomeInactive(session);
    metrics.sessionDidDeactivate(session);
    EXPECT_EQ(session.activations, 2);  // none after a deactivation
    EXPECT_TRUE(session.contexts.empty());
    session.current->session(session, WCSessionActivationState::inactive, std::nullopt);  // any state will do
    EXPECT_EQ(session.contexts, std::vector<Dictionary>{kSecond});
}

TEST(WatchMetrics, FailsSilentlyAndKeepsTheDictionary) {
    const struct {
        const char* name;
        void (*spoil)(ScriptedSession&);
        std::optional<WCError> activationError;
        std::size_t updates;
    } rows[] = {
        {"unsupported", [](ScriptedSession& s) { s.supported = false; }, std::nullopt, 0},
        {"no_session", [](ScriptedSession& s) { s.exists = false; }, std::nullopt, 0},
        {"not_paired", [](ScriptedSession& s) { s.paired = false; }, std::nullopt, 0},
        {"not_installed", [](ScriptedSession& s) { s.installed = false; }, std::nullopt, 0},
        {"activation_error", [](ScriptedSession&) {}, WCError{"no"}, 0},
        {"update_error", [](ScriptedSession& s) { s.updateError = WCError{"no"}; }, std::nullopt, 1},
    };
    for (const auto& row : rows) {
        ScriptedSession session;
        row.spoil(session);
        WatchMetrics metrics(session);
        metrics.updateWatchContextWithDict(kFirst);
        if (session.current != nullptr) {
            session.current->session(session, WCSessionActivationState::activated, row.activationError);
        }
        EXPECT_EQ(session.contexts.size(), row.updates) << row.name;
        session.supported = session.exists = session.paired = session.installed = true;
        metrics.performUpdateWatchContext();
        EXPECT_EQ(session.contexts.back(), kFirst) << row.name;
    }
}

class DirectoryWatch : public testing::Test {
protected:
    // What two updates leave in the inbox; nil when nothing.
    std::optional<Dictionary> delivered() {
        DirectoryWatchSession session(inbox_);
        WatchMetrics metrics(session);
        metrics.updateWatchContextWithDict(kFirst);
        metrics.updateWatchContextWithDict(kSecond);
        session.waitForActivations();
        lastError_ = session.error();
        if (session.deliveredContexts() == 0) {
            return std::nullopt;
        }
        return std::get<Dictionary>(dictionaryFromPropertyList(readFile(inbox_ / "application-context.plist")));
    }

    TemporaryFolder folder_;
    std::filesystem::path inbox_ = folder_.path() / "watch";
    std::optional<WCError> lastError_;
};

TEST_F(DirectoryWatch, DeliversToAPairedWatchWithTheApplication) {
    EXPECT_FALSE(delivered());  // no folder
    EXPECT_FALSE(std::filesystem::exists(inbox_));
    std::filesystem::create_directories(inbox_);
    EXPECT_FALSE(delivered());  // no application
    writeFile(inbox_ / "application.plist", "");
    writeFile(inbox_ / "application-context.plist.new", "left by a killed writer");
    EXPECT_EQ(delivered(), kSecond);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(inbox_), {}), 2);  // nothing temporary is left
}

TEST_F(DirectoryWatch, DeliversWhateverStateTheActivationEndsIn) {
    writeFile(inbox_ / "application.plist", "");
    DirectoryWatchSession session(inbox_);
    WatchMetrics metrics(session);
    metrics.session(session, WCSessionActivationState::notActivated, WCError{"no"});
    EXPECT_EQ(session.deliveredContexts(), 0);
    metrics.session(session, WCSessionActivationState::inactive, std::nullopt);
    EXPECT_EQ(session.deliveredContexts(), 1);
}

// Once its address was called after its end; the sanitizers watch.
TEST_F(DirectoryWatch, CallsNobodyWhoIsGone) {
    writeFile(inbox_ / "application.plist", "");
    DirectoryWatchSession session(inbox_);
    for (int time = 0; time < 200; ++time) {
        WatchMetrics metrics(session);
        metrics.updateWatchContextWithDict(kFirst);
    }
    WatchMetrics last(session);
    last.updateWatchContextWithDict(kSecond);
    { WatchMetrics(session).performUpdateWatchContext(); }  // was never the delegate, so takes nobody's place
    EXPECT_EQ(session.delegate(), &last);
    session.waitForActivations();
    EXPECT_GE(session.deliveredContexts(), 1);
}

TEST_F(DirectoryWatch, TellsAnInboxThatIsNoFolderAndAContextThatCannotBeWritten) {
    writeFile(inbox_, "a file");
    EXPECT_FALSE(delivered());
    EXPECT_EQ(lastError_->localizedDescription, inbox_.string() + " is not a folder");
    std::filesystem::remove(inbox_);
    writeFile(inbox_ / "application.plist", "");
    std::filesystem::create_directories(inbox_ / "application-context.plist");
    EXPECT_FALSE(delivered());
    EXPECT_TRUE(lastError_);
}

}  // namespace
}  // namespace lunabrook
