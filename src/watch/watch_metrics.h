// The watch's context: keeps the latest dictionary and pushes it once the session's activation has completed.
//
//   watchMetrics.updateWatchContextWithDict(labels);   // the push follows on the session's thread
//
// Every failure is silent and none changes the dictionary: an unsupported device, no watch, no watch application, an
// activation or update error.

#pragma once

#include <mutex>

#include "platform/device/watch_connectivity.h"
#include "platform/values/value.h"

namespace lunabrook {

// An observer that a host may set; nothing here calls it.
class WatchMetricsDelegate;

class WatchMetrics : public WCSessionDelegate {
public:
    explicit WatchMetrics(WatchConnectivity& connectivity) : connectivity_(connectivity) {}
    // An activation that completes later finds nobody; the session outlives it.
    ~WatchMetrics() override;
    WatchMetrics(const WatchMetrics&) = delete;
    WatchMetrics& operator=(const WatchMetrics&) = delete;

    // Replaces the dictionary (no merge) and activates the session; of several quick updates the last is delivered.
    void updateWatchContextWithDict(Dictionary dictionary);
    // Pushes now if a watch can receive it.
    void performUpdateWatchContext();

    // Not owned, not cleared: its owner guarantees its life.
    WatchMetricsDelegate* delegate() const { return delegate_; }
    void setDelegate(WatchMetricsDelegate* delegate) { delegate_ = delegate; }

    void session(WCSession& session, WCSessionActivationState activationDidCompleteWithState,
                 const std::optional<WCError>& error) override;
    void sessionDidBecomeInactive(WCSession&) override {}
    // The session is not activated again: meant.
    void sessionDidDeactivate(WCSession&) override {}

private:
    WatchConnectivity& connectivity_;
    std::mutex mutex_;  // the callbacks arrive on the session's thread
    Dictionary contextDict_;
    WatchMetricsDelegate* delegate_ = nullptr;
};

}  // namespace lunabrook
