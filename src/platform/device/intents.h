// The base classes of the intents service: what the operating system knows of an intent, a response and an extension.

#pragma once

#include <memory>

namespace lunabrook {

// An activity that a response may hand to the application; the system never makes one.
class UserActivity {
public:
    virtual ~UserActivity() = default;
};

class INIntent {
public:
    virtual ~INIntent() = default;
};

class INIntentResponse {
public:
    virtual ~INIntentResponse() = default;

    const std::shared_ptr<UserActivity>& userActivity() const { return userActivity_; }
    void setUserActivity(std::shared_ptr<UserActivity> activity) { userActivity_ = std::move(activity); }

private:
    std::shared_ptr<UserActivity> userActivity_;
};

// The principal class of an extension. The object that it names for an intent is asked to handle it.
class INExtension {
public:
    virtual ~INExtension() = default;

    virtual INExtension& handlerForIntent(const INIntent& intent) = 0;
};

}  // namespace lunabrook
