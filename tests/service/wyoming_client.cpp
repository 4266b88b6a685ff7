#include "wyoming_client.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <utility>

namespace lunabrook::test {

Service::Service(const std::string& command) {
    int pipe[2];
    if (::pipe(pipe) != 0) {
        return;
    }
    process_ = ::fork();
    if (process_ == 0) {
        ::dup2(pipe[1], STDERR_FILENO);
        ::close(pipe[0]);
        ::execl("/bin/sh", "sh", "-c", ("exec " + command).c_str(), nullptr);
        ::_exit(127);
    }
    ::close(pipe[1]);
    errors_ = pipe[0];
    const std::string line = nextError();
    uri_ = line.substr(std::min(line.size(), line.find("listening on ") + 13));
}

std::string Service::nextError() {
    std::string line;
    for (char byte = 0; ::read(errors_, &byte, 1) == 1 && byte != '\n';) {
        line += byte;
    }
    return line;
}

int Service::stop() {
    int status = -1;
    if (process_ > 0) {
        ::kill(process_, SIGTERM);
        ::waitpid(process_, &status, 0);
        ::close(errors_);
        process_ = -1;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

Client::Client(const std::string& uri) {
    if (uri.starts_with("unix://")) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        uri.copy(address.sun_path, sizeof(address.sun_path) - 1, 7);
        socket_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    } else {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(std::stoi("0" + uri.substr(uri.rfind(':') + 1))));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socket_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    }
}

Client::Client(Client&& other) noexcept
    : socket_(std::exchange(other.socket_, -1)), reader_(std::move(other.reader_)) {}

Client::~Client() { ::close(socket_); }

void Client::send(const std::string& bytes) const {
    for (std::size_t sent = 0; sent < bytes.size();) {
        const ssize_t count = ::send(socket_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count < 0) {
            return;
        }
        sent += static_cast<std::size_t>(count);
    }
}

void Client::endInput() const { ::shutdown(socket_, SHUT_WR); }

bool Client::hasInput(int milliseconds) const {
    pollfd polled{.fd = socket_, .events = POLLIN, .revents = 0};
    return ::poll(&polled, 1, milliseconds) > 0;
}

std::optional<Event> Client::receive() {
    for (char chunk[4096];;) {
        auto found = reader_.next();
        if (auto* event = std::get_if<Event>(&found)) {
            return std::move(*event);
        }
        constexpr int kPatienceMilliseconds = 60'000;
        const ssize_t count = hasInput(kPatienceMilliseconds) ? ::recv(socket_, chunk, sizeof(chunk), 0) : 0;
        if (count <= 0) {
            return std::nullopt;
        }
        reader_.feed({chunk, static_cast<std::size_t>(count)});
    }
}

std::optional<Event> Client::ask(const Event& event) {
    send(wyoming::bytesOfEvent(event));
    return receive();
}

std::string Client::say(const std::string& sentence, const std::string& language) {
    Event transcript{.type = "transcript", .data = {{"text", sentence}}};
    if (!language.empty()) {
        transcript.data["language"] = language;
    }
    const auto reply = ask(transcript);
    return reply ? (reply->type == "handled" ? "" : "-") + reply->data.value("text", "") : "nothing";
}

}  // namespace lunabrook::test
