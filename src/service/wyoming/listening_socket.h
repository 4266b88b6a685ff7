// Where the service listens, and the socket that does.
//
//   tcp://127.0.0.1:10620    numbers or localhost; port 0 lets the system choose
//   tcp://[::1]:10620
//   unix:///run/user/1000/lunabrook.sock
//   stdio://                 nowhere: one conversation on standard input and output

#pragma once

#include <sys/socket.h>
#include <sys/stat.h>

#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace lunabrook::wyoming {

struct StandardStreams {};
struct TcpAddress {
    std::string host;  // without brackets
    std::string port;
};
struct UnixAddress {
    std::string path;
};
using Address = std::variant<StandardStreams, TcpAddress, UnixAddress>;

// Nil when the text is no address of these kinds.
std::optional<Address> addressFromUri(std::string_view uri);

class ListeningSocket {
public:
    // Throws std::system_error that says what cannot be listened on. A path is listened on for the user alone; a socket
    // of the user's that nobody listens on any more makes room, any other file stays.
    explicit ListeningSocket(const TcpAddress& address);
    explicit ListeningSocket(const UnixAddress& address);

    // Takes the path away, unless another file stands there by now.
    ~ListeningSocket();
    ListeningSocket(const ListeningSocket&) = delete;
    ListeningSocket& operator=(const ListeningSocket&) = delete;

    int descriptor() const { return descriptor_; }   // does not block
    const std::string& uri() const { return uri_; }  // with the port that the system chose

private:
    void listen(int family, const sockaddr* address, socklen_t length);

    std::string uri_;
    int descriptor_ = -1;
    std::string path_;       // of a Unix socket
    struct stat made_ = {};  // the file at the path
};

}  // namespace lunabrook::wyoming
