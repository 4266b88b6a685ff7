#include "service/wyoming/connection.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <exception>

#include "platform/device/event_waiter.h"

namespace lunabrook::wyoming {

namespace {

using Clock = std::chrono::steady_clock;

constexpr Seconds kMostLinger{5};

bool isToBeTriedAgain() { return errno == EINTR || errno == EAGAIN || errno == EWOULDBLOCK; }

// A socket is never waited for here. Neither is a pipe: the caller saw that it has bytes, or room for the fewest bytes
// that the system promises then.
ssize_t readSome(int input, char* bytes, std::size_t count) {
    const ssize_t received = ::recv(input, bytes, count, MSG_DONTWAIT);
    return received < 0 && errno == ENOTSOCK ? ::read(input, bytes, count) : received;
}

ssize_t writeSome(int output, const char* bytes, std::size_t count) {
    const ssize_t sent = ::send(output, bytes, count, MSG_DONTWAIT | MSG_NOSIGNAL);
    return sent < 0 && errno == ENOTSOCK ? ::write(output, bytes, std::min<std::size_t>(count, PIPE_BUF)) : sent;
}

class Connection {
public:
    Connection(int input, int output, const Conversation& conversation, Seconds idleTime)
        : input_(input), output_(output), conversation_(conversation), idleTime_(idleTime) {}

    void serve() {
        restartIdleTime();
        while (takeEvents() && receive()) {
        }
    }

private:
    // What came in full is answered. False when the connection is over.
    bool takeEvents() {
        for (;;) {
            const EventReader::Found found = reader_.next();
            if (const auto* none = std::get_if<EventReader::NoEvent>(&found)) {
                return refuse(errorEvent("no-event", none->why));
            }
            const auto* event = std::get_if<Event>(&found);
            if (event == nullptr) {
                return true;
            }
            if (!answer(*event)) {
                return false;
            }
            restartIdleTime();
        }
    }

    bool answer(const Event& event) {
        if (waiter_.wait(-1, 0, Seconds(0)) == WakeUp::stop) {
            return false;  // it is heard between two events, however many are waiting
        }
        restartIdleTime();
        try {
            const auto reply = conversation_.answer(event);
            return !reply || (isError(*reply) ? refuse(*reply) : send(*reply));
        } catch (const std::exception& error) {
            return refuse(errorEvent("failed", error.what()));
        }
    }

    bool receive() {
        const WakeUp wakeUp = waiter_.wait(input_, POLLIN, timeLeft());
        if (wakeUp == WakeUp::stop) {
            return false;
        }
        if (wakeUp == WakeUp::timeout) {
            return reader_.isWithinEvent() && refuse(errorEvent("no-event", "the rest of the event did not come"));
        }
        const ssize_t count = readSome(input_, chunk_.data(), chunk_.size());
        if (count == 0 && reader_.isWithinEvent()) {
            return refuse(errorEvent("no-event", "the event is cut off"));
        }
        if (count > 0) {
            reader_.feed({chunk_.data(), static_cast<std::size_t>(count)});
        }
        return count > 0 || (count < 0 && isToBeTriedAgain());
    }

    bool send(const Event& event) {
        const std::string bytes = bytesOfEvent(event);
        for (std::size_t sent = 0; sent < bytes.size();) {
            if (waiter_.wait(output_, POLLOUT, timeLeft()) != WakeUp::input) {
                return false;
            }
            const ssize_t count = writeSome(output_, bytes.data() + sent, bytes.size() - sent);
            if (count < 0 && !isToBeTriedAgain()) {
                return false;
            }
            sent += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        }
        return true;
    }

    // Always false. A socket that is closed while bytes for it are under way takes the last answer back, so what still
    // comes is passed over for a moment.
    bool refuse(const Event& error) {
        restartIdleTime();
        if (send(error) && ::shutdown(output_, SHUT_WR) == 0) {
            idleTime_ = std::min(idleTime_, kMostLinger);
            restartIdleTime();
            while (waiter_.wait(input_, POLLIN, timeLeft()) == WakeUp::input) {
                const ssize_t count = readSome(input_, chunk_.data(), chunk_.size());
                if (count == 0 || (count < 0 && !isToBeTriedAgain())) {
                    break;
                }
            }
        }
        return false;
    }

    void restartIdleTime() { end_ = Clock::now() + std::chrono::duration_cast<Clock::duration>(idleTime_); }
    Seconds timeLeft() const { return std::max<Seconds>(end_ - Clock::now(), Seconds(0)); }

    int input_;
    int output_;
    const Conversation& conversation_;
    Seconds idleTime_;
    Clock::time_point end_;
    EventWaiter waiter_;
    EventReader reader_;
    std::array<char, 16384> chunk_{};
};

}  // namespace

void serveConnection(int input, int output, const Conversation& conversation, Seconds idleTime) {
    Connection(input, output, conversation, idleTime).serve();
}

}  // namespace lunabrook::wyoming
