#include "service/bus/extension_main.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>

#include "host/call_parser.h"
#include "host/device_option_flags.h"
#include "host/message.h"
#include "platform/device/event_waiter.h"
#include "platform/device/standard_output.h"
#include "service/bus/intents_service.h"

namespace lunabrook {

namespace {

using Seconds = std::chrono::duration<double>;

constexpr const char* kAbout =
    "Serves the nine sleep intents on the session bus, which starts it when\n"
    "somebody calls.\n"
    "\n"
    "  busctl --user call kestrovan.Lunabrook /kestrovan/Lunabrook \\\n"
    "      kestrovan.Lunabrook.Intents1 Handle s ReadinessIntent\n"
    "\n"
    "Exit status: 0 left when idle or told to, 1 no bus or the name is taken, 2 a\n"
    "wrong call, 3 memory ran out.\n";

constexpr double kMostIdleSeconds = 86'400;

enum Status { kLeft = 0, kNoBus = 1, kWrongCall = 2 };

struct Call {
    DeviceOptions device;
    double idleSeconds = 30;
};

Status complain(Status status, const std::string& what) {
    tell(kIntentsServiceProgram, what);
    return status;
}

// Nil when the arguments are fine.
std::optional<std::string> whatIsWrong(const Call& call) {
    if (!(call.idleSeconds >= 0 && call.idleSeconds <= kMostIdleSeconds)) {
        return "--idle-seconds takes 0 to 86400 seconds";
    }
    return whatIsWrongWithDevice(kIntentsServiceProgram, call.device);
}

// Until a stop is asked for or nothing came for the idle time.
void serve(sdbus::IConnection& connection, EventWaiter& waiter, Seconds idleTime) {
    using Clock = std::chrono::steady_clock;
    Clock::time_point lastWork = Clock::now();
    for (;;) {
        const bool hasWorked = connection.processPendingRequest();
        if (hasWorked) {
            lastWork = Clock::now();
        }
        const Seconds idleTimeLeft = idleTime - (Clock::now() - lastWork);
        const auto poll = connection.getEventLoopPollData();
        const Seconds pollTimeout = poll.getRelativeTimeout().value_or(std::chrono::hours(24));
        // After a call only looks: a stop is heard between two calls, however many are waiting.
        const Seconds timeout = hasWorked ? Seconds(0) : std::min(idleTimeLeft, pollTimeout);
        const WakeUp wakeUp = waiter.wait(poll.fd, poll.events, timeout);
        const bool isIdle = !hasWorked && wakeUp == WakeUp::timeout && Clock::now() - lastWork >= idleTime;
        if (wakeUp == WakeUp::stop || isIdle) {
            return;
        }
    }
}

// Every call that the bus sent to the name stands in the queue when the bus confirms that the name is free again; a
// later one starts another process. So answering the queue loses none.
void leave(sdbus::IConnection& connection) {
    connection.releaseName(kIntentsServiceName);
    while (connection.processPendingRequest()) {
    }
}

Status run(const Call& call) {
    EventWaiter waiter;
    std::unique_ptr<sdbus::IConnection> connection;
    try {
        connection = sdbus::createSessionBusConnection();
    } catch (const sdbus::Error& error) {
        return complain(kNoBus, "there is no session bus to serve on: " + error.getMessage());
    }
    IntentsService service(*connection, call.device);
    try {
        connection->requestName(kIntentsServiceName);
    } catch (const sdbus::Error& error) {
        const bool isTaken = error.getName() == "org.freedesktop.DBus.Error.FileExists";
        return complain(kNoBus, std::string("cannot own the name ") + kIntentsServiceName + ": " +
                                    (isTaken ? "another program on this bus has it" : error.getMessage()));
    }
    try {
        serve(*connection, waiter, Seconds(call.idleSeconds));
        leave(*connection);
    } catch (const sdbus::Error& error) {
        return complain(kNoBus, "the session bus is gone: " + error.getMessage());
    }
    return kLeft;
}

}  // namespace

int NSExtensionMain(int argc, char** argv) {
    StandardOutput output;
    CLI::App app(kAbout, kIntentsServiceProgram);
    prepareParser(app);
    Call call;
    app.add_option("--idle-seconds", call.idleSeconds, "Leave when nobody called for so long (30)")->type_name("N");
    addDeviceOptions(app, call.device);
    if (const auto status = exitAfterParsing(app, argc, argv, output)) {
        return *status;
    }
    if (const auto wrong = whatIsWrong(call)) {
        return complain(kWrongCall, *wrong);
    }
    return run(call);
}

}  // namespace lunabrook
