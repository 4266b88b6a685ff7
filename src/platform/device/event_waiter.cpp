#include "platform/device/event_waiter.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <csignal>

namespace lunabrook {

namespace {

constexpr double kLongestWaitMilliseconds = 2'000'000'000;  // 23 days; more does not fit

sigset_t stopSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    return signals;
}

// Rounded up, so that the moment has come when the wait ends.
int pollTimeout(std::optional<std::chrono::duration<double>> timeout) {
    constexpr int kForever = -1;
    return timeout ? static_cast<int>(std::clamp(std::ceil(timeout->count() * 1000), 0.0, kLongestWaitMilliseconds))
                   : kForever;
}

}  // namespace

EventWaiter::EventWaiter() {
    const sigset_t signals = stopSignals();
    ::sigprocmask(SIG_BLOCK, &signals, nullptr);
    stopSignals_ = ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

EventWaiter::~EventWaiter() { ::close(stopSignals_); }

WakeUp EventWaiter::wait(int descriptor, short events, std::optional<std::chrono::duration<double>> timeout) {
    pollfd polled[] = {{.fd = stopSignals_, .events = POLLIN, .revents = 0},
                       {.fd = descriptor, .events = events, .revents = 0}};
    const int count = ::poll(polled, std::size(polled), pollTimeout(timeout));
    if (count == 0) {
        return WakeUp::timeout;
    }
    return count > 0 && polled[0].revents != 0 ? WakeUp::stop : WakeUp::input;
}

}  // namespace lunabrook
