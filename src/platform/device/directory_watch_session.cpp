#include "platform/device/directory_watch_session.h"

#include <new>

#include "platform/files/private/whole_file.h"
#include "platform/files/property_list.h"

namespace lunabrook {

DirectoryWatchSession::DirectoryWatchSession(std::filesystem::path inbox)
    : inbox_(std::move(inbox)), thread_([this] { completeActivations(); }) {}

DirectoryWatchSession::~DirectoryWatchSession() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void DirectoryWatchSession::setDelegate(WCSessionDelegate* delegate) {
    std::unique_lock lock(mutex_);
    delegate_ = delegate;
    if (std::this_thread::get_id() != thread_.get_id()) {
        changed_.wait(lock, [&] { return called_ == nullptr || called_ == delegate; });
    }
}

WCSessionDelegate* DirectoryWatchSession::delegate() const {
    const std::lock_guard lock(mutex_);
    return delegate_;
}

void DirectoryWatchSession::activateSession() {
    {
        const std::lock_guard lock(mutex_);
        ++pending_;
    }
    changed_.notify_all();
}

// False when there was no memory for it: nobody is above a thread to hear of that.
bool DirectoryWatchSession::tell(WCSessionDelegate* delegate, const std::optional<WCError>& error) {
    try {
        if (delegate != nullptr) {
            delegate->session(
                *this, error ? WCSessionActivationState::notActivated : WCSessionActivationState::activated, error);
        }
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void DirectoryWatchSession::completeActivations() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return pending_ > 0 || isEnding_; });
        if (pending_ == 0) {
            return;
        }
        std::error_code ignored;
        const bool isUsable = !std::filesystem::exists(inbox_, ignored) || isPaired();
        error_ = isUsable ? std::nullopt : std::optional(WCError{inbox_.string() + " is not a folder"});
        called_ = delegate_;
        const auto error = error_;
        lock.unlock();  // the delegate calls back into the session
        const bool hasMemory = tell(called_, error);
        lock.lock();
        called_ = nullptr;
        if (!hasMemory) {
            error_ = WCError{"there is not enough memory"};
        }
        --pending_;
        changed_.notify_all();
    }
}

void DirectoryWatchSession::waitForActivations() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return pending_ == 0; });
}

bool DirectoryWatchSession::isPaired() const {
    std::error_code ignored;
    return std::filesystem::is_directory(inbox_, ignored);
}

bool DirectoryWatchSession::isWatchAppInstalled() const {
    std::error_code ignored;
    return std::filesystem::exists(inbox_ / "application.plist", ignored);
}

std::optional<WCError> DirectoryWatchSession::write(const Dictionary& context) const {
    PropertyList list;
    for (const auto& [key, value] : context) {
        list.set(key, value);
    }
    const auto bytes = list.binary();
    if (const auto* unwritable = std::get_if<PropertyList::Unwritable>(&bytes)) {
        return WCError{"the context " + unwritable->why};
    }
    const std::filesystem::path file = inbox_ / "application-context.plist";
    const FileDescriptor folder(inbox_, O_RDONLY | O_DIRECTORY);
    auto error = lock(folder, kPatience);
    if (!error) {
        error = replaceFile(file, std::get<std::string>(bytes));
    }
    if (error) {
        return WCError{file.string() + " cannot be written: " + *error};
    }
    return std::nullopt;
}

std::optional<WCError> DirectoryWatchSession::updateApplicationContext(const Dictionary& context) {
    auto error = write(context);
    if (!error) {
        ++delivered_;
    }
    const std::lock_guard lock(mutex_);
    error_ = error;
    return error;
}

std::optional<WCError> DirectoryWatchSession::error() const {
    const std::lock_guard lock(mutex_);
    return error_;
}

}  // namespace lunabrook
