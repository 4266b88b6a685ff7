// The service as its clients meet it: the real program, and one connection to it.
//
//   Service service("--uri tcp://127.0.0.1:0");
//   Client client(service.uri());
//   client.ask({.type = "ping"})->type == "pong"

#pragma once

#include <optional>
#include <string>

#include "service/wyoming/event.h"

namespace lunabrook::test {

using wyoming::Event;

// A program in the background whose standard error says where it listens.
class Service {
public:
    explicit Service(const std::string& command);
    ~Service() { stop(); }
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    const std::string& uri() const { return uri_; }
    std::string nextError();  // the next line of standard error
    int stop();               // tells it to; its exit status, -1 when a signal ended it

private:
    int process_ = -1;
    int errors_ = -1;
    std::string uri_;
};

class Client {
public:
    explicit Client(const std::string& uri);
    Client(Client&& other) noexcept;
    ~Client();

    void send(const std::string& bytes) const;  // as much as the service takes
    void endInput() const;
    bool hasInput(int milliseconds) const;
    std::optional<Event> receive();  // nil when the connection was closed
    std::optional<Event> ask(const Event& event);

    // The spoken text, "-" before one that is not an answer.
    std::string say(const std::string& sentence, const std::string& language = "");

private:
    int socket_ = -1;
    wyoming::EventReader reader_;
};

}  // namespace lunabrook::test
