// What a program with one thread sleeps on: input, a request to stop, or a moment.
//
//   EventWaiter waiter;
//   while (waiter.wait(descriptor, POLLIN, 30s) == WakeUp::input) read(descriptor);

#pragma once

#include <chrono>
#include <optional>

namespace lunabrook {

enum class WakeUp { input, stop, timeout };

class EventWaiter {
public:
    // From here on SIGTERM and SIGINT do not end the process: they are kept until a wait tells of them.
    EventWaiter();
    ~EventWaiter();
    EventWaiter(const EventWaiter&) = delete;
    EventWaiter& operator=(const EventWaiter&) = delete;

    // `events` as poll knows them. A request to stop goes before input; it may be told of input that is not there. Nil
    // waits without an end.
    WakeUp wait(int descriptor, short events, std::optional<std::chrono::duration<double>> timeout);

private:
    int stopSignals_;
};

}  // namespace lunabrook
