// A watch whose inbox is a folder: paired when the folder is there, the watch application installed when the folder
// holds application.plist. A context is written there whole, as application-context.plist; the latest one wins.
//
// Activations complete one after the other on a thread of the session's own.

#pragma once

#include <atomic>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <thread>

#include "platform/device/watch_connectivity.h"

namespace lunabrook {

class DirectoryWatchSession : public WCSession, public WatchConnectivity {
public:
    explicit DirectoryWatchSession(std::filesystem::path inbox);
    // Completes the activations that were asked for.
    ~DirectoryWatchSession() override;
    DirectoryWatchSession(const DirectoryWatchSession&) = delete;
    DirectoryWatchSession& operator=(const DirectoryWatchSession&) = delete;

    bool isSupported() const override { return true; }
    WCSession* defaultSession() override { return this; }

    void setDelegate(WCSessionDelegate* delegate) override;
    WCSessionDelegate* delegate() const override;
    // An inbox that is no folder is an error of the activation.
    void activateSession() override;
    bool isPaired() const override;
    bool isWatchAppInstalled() const override;
    std::optional<WCError> updateApplicationContext(const Dictionary& context) override;

    // Until every activation has completed.
    void waitForActivations();
    int deliveredContexts() const { return delivered_; }
    // Of the latest activation or update; nil when that went well or there was none.
    std::optional<WCError> error() const;

private:
    void completeActivations();
    bool tell(WCSessionDelegate* delegate, const std::optional<WCError>& error);
    std::optional<WCError> write(const Dictionary& context) const;

    std::filesystem::path inbox_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    WCSessionDelegate* delegate_ = nullptr;
    WCSessionDelegate* called_ = nullptr;  // the delegate that is being told of a completion
    int pending_ = 0;
    bool isEnding_ = false;
    std::optional<WCError> error_;
    std::atomic<int> delivered_ = 0;
    std::thread thread_;  // last: it uses everything above
};

}  // namespace lunabrook
