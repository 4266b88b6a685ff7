#include "service/wyoming/service_main.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <system_error>

#include "host/call_parser.h"
#include "host/device_option_flags.h"
#include "host/message.h"
#include "platform/device/standard_output.h"
#include "platform/text/display_width.h"
#include "service/wyoming/connection.h"
#include "service/wyoming/connection_processes.h"
#include "service/wyoming/listening_socket.h"

namespace lunabrook::wyoming {

namespace {

constexpr const char* kAbout =
    "Answers a voice assistant that speaks the Wyoming protocol: a sentence in, a\n"
    "sentence out.\n"
    "\n"
    "  systemctl --user enable --now lunabrook-wyoming.socket   have it started, or\n"
    "  lunabrook-wyoming --uri tcp://127.0.0.1:10620            keep it running\n"
    "\n"
    "Nobody is asked for a password: who reaches the address hears about your\n"
    "sleep.\n"
    "Exit status: 0 the client has gone or it was told to stop, 1 it cannot listen,\n"
    "2 a wrong call, 3 memory ran out.\n";

constexpr double kMostIdleSeconds = 86'400;

enum Status { kLeft = 0, kCannotListen = 1, kWrongCall = 2 };

struct Call {
    DeviceOptions device;
    std::string uri = "stdio://";
    double idleSeconds = 60;
};

Status complain(Status status, const std::string& what) {
    tell(kProgram, what);
    return status;
}

// Nil when the arguments are fine.
std::optional<std::string> whatIsWrong(const Call& call) {
    if (!(call.idleSeconds > 0 && call.idleSeconds <= kMostIdleSeconds)) {
        return "--idle-seconds takes more than 0 and at most 86400 seconds";
    }
    if (!addressFromUri(call.uri)) {
        return "--uri is no address: " + quotedText(call.uri) +
               "; say one like stdio://, tcp://127.0.0.1:10620, tcp://[::1]:10620 or unix:///PATH";
    }
    return whatIsWrongWithDevice(kProgram, call.device);
}

class Server {
public:
    explicit Server(const Call& call) : conversation_(call.device), idleTime_(call.idleSeconds) {}

    Status operator()(const StandardStreams&) const {
        serveConnection(STDIN_FILENO, STDOUT_FILENO, conversation_, idleTime_);
        return kLeft;
    }

    template <class SocketAddress>
    Status operator()(const SocketAddress& address) const {
        try {
            const ListeningSocket socket(address);
            serveConnections(
                socket.descriptor(), [&socket] { complain(kLeft, "listening on " + socket.uri()); },
                [this](int connection) { serveConnection(connection, connection, conversation_, idleTime_); });
        } catch (const std::system_error& error) {
            return complain(kCannotListen, error.what());
        }
        return kLeft;
    }

private:
    Conversation conversation_;
    Seconds idleTime_;
};

}  // namespace

int runService(int argc, char** argv) {
    StandardOutput output;
    CLI::App app(kAbout, kProgram);
    prepareParser(app);
    Call call;
    app.add_option("--uri", call.uri, "tcp://HOST:PORT or unix://PATH (else stdio://)")->type_name("URI");
    app.add_option("--idle-seconds", call.idleSeconds, "End a connection that is silent for so long (60)")
        ->type_name("N");
    addDeviceOptions(app, call.device);
    if (const auto status = exitAfterParsing(app, argc, argv, output)) {
        return *status;
    }
    if (const auto wrong = whatIsWrong(call)) {
        return complain(kWrongCall, *wrong);
    }
    return std::visit(Server(call), *addressFromUri(call.uri));
}

}  // namespace lunabrook::wyoming
