// The link to the paired watch, as the phone's system offers it.
//
// A session is activated once its delegate is set; the delegate hears of the completion on a thread of the session's
// choosing. An application context is one dictionary of which the watch keeps the latest.

#pragma once

#include <optional>
#include <string>

#include "platform/values/value.h"

namespace lunabrook {

enum class WCSessionActivationState { notActivated = 0, inactive = 1, activated = 2 };

struct WCError {
    std::string localizedDescription;
};

class WCSession;

class WCSessionDelegate {
public:
    virtual ~WCSessionDelegate() = default;

    virtual void session(WCSession& session, WCSessionActivationState activationDidCompleteWithState,
                         const std::optional<WCError>& error) = 0;
    virtual void sessionDidBecomeInactive(WCSession& session) = 0;
    virtual void sessionDidDeactivate(WCSession& session) = 0;
};

class WCSession {
public:
    virtual ~WCSession() = default;

    // Not owned. Once another one, or none, is set, the former one is not called any more; a call that is under way on
    // another thread has ended.
    virtual void setDelegate(WCSessionDelegate* delegate) = 0;
    virtual WCSessionDelegate* delegate() const = 0;
    // Completes later, on another thread.
    virtual void activateSession() = 0;

    virtual bool isPaired() const = 0;
    virtual bool isWatchAppInstalled() const = 0;
    // Nil when the watch will get it.
    virtual std::optional<WCError> updateApplicationContext(const Dictionary& context) = 0;
};

// What the session's class answers on the phone.
class WatchConnectivity {
public:
    virtual ~WatchConnectivity() = default;

    virtual bool isSupported() const = 0;
    virtual WCSession* defaultSession() = 0;  // null when there is none
};

}  // namespace lunabrook
