#include "watch/watch_metrics.h"

namespace lunabrook {

WatchMetrics::~WatchMetrics() {
    WCSession* session = connectivity_.isSupported() ? connectivity_.defaultSession() : nullptr;
    if (session != nullptr && session->delegate() == this) {
        session->setDelegate(nullptr);
    }
}

void WatchMetrics::updateWatchContextWithDict(Dictionary dictionary) {
    {
        const std::lock_guard lock(mutex_);
        contextDict_ = std::move(dictionary);
    }
    WCSession* session = connectivity_.isSupported() ? connectivity_.defaultSession() : nullptr;
    if (session != nullptr) {
        session->setDelegate(this);
        session->activateSession();
    }
}

// The state is not looked at: a completion without error pushes whatever it is.
void WatchMetrics::session(WCSession&, WCSessionActivationState, const std::optional<WCError>& error) {
    if (!error) {
        performUpdateWatchContext();
    }
}

void WatchMetrics::performUpdateWatchContext() {
    WCSession* session = connectivity_.defaultSession();
    if (session == nullptr || !session->isPaired() || !session->isWatchAppInstalled()) {
        return;
    }
    std::unique_lock lock(mutex_);
    const Dictionary context = contextDict_;
    lock.unlock();
    static_cast<void>(session->updateApplicationContext(context));  // an error is dropped: meant
}

}  // namespace lunabrook
