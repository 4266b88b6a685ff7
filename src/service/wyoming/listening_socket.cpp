#include "service/wyoming/listening_socket.h"

#include <netdb.h>
#include <netinet/in.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <system_error>

namespace lunabrook::wyoming {

namespace {

constexpr int kOn = 1;

[[noreturn]] void fail(const std::string& uri, int error) {
    throw std::system_error(error, std::generic_category(), "cannot listen on " + uri);
}

using Resolved = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

// Numbers alone: a name service could hang, and answer otherwise tomorrow.
Resolved resolve(const TcpAddress& address) {
    addrinfo hints{};
    hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    const std::string& host = address.host == "localhost" ? "127.0.0.1" : address.host;
    const bool isFound = ::getaddrinfo(host.c_str(), address.port.c_str(), &hints, &found) == 0;
    return {isFound ? found : nullptr, &::freeaddrinfo};
}

bool isPort(std::string_view text) {
    constexpr std::size_t kMostDigits = 5;
    constexpr int kMost = 65535;
    return !text.empty() && text.size() <= kMostDigits &&
           std::all_of(text.begin(), text.end(), [](char digit) { return digit >= '0' && digit <= '9'; }) &&
           std::stoi(std::string(text)) <= kMost;
}

std::optional<Address> tcpAddress(std::string_view rest) {
    const std::size_t colon = rest.rfind(':');
    if (colon == std::string_view::npos || !isPort(rest.substr(colon + 1))) {
        return std::nullopt;
    }
    std::string_view host = rest.substr(0, colon);
    const bool isBracketed = host.starts_with('[') && host.ends_with(']');
    if (isBracketed) {
        host = host.substr(1, host.size() - 2);
    }
    const TcpAddress address{std::string(host), std::string(rest.substr(colon + 1))};
    const bool hasColon = host.find(':') != std::string_view::npos;
    return isBracketed == hasColon && !host.empty() && resolve(address) ? std::optional<Address>(address)
                                                                        : std::nullopt;
}

int portOf(int descriptor) {
    sockaddr_storage bound{};
    socklen_t length = sizeof(bound);
    ::getsockname(descriptor, reinterpret_cast<sockaddr*>(&bound), &length);
    return ntohs(bound.ss_family == AF_INET6 ? reinterpret_cast<const sockaddr_in6&>(bound).sin6_port
                                             : reinterpret_cast<const sockaddr_in&>(bound).sin_port);
}

// A socket of the user's own on which nobody listens.
bool isStale(const sockaddr_un& address) {
    struct stat file {};
    if (::lstat(address.sun_path, &file) != 0 || !S_ISSOCK(file.st_mode) || file.st_uid != ::geteuid()) {
        return false;
    }
    const int caller = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const bool isRefused =
        ::connect(caller, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 && errno == ECONNREFUSED;
    ::close(caller);
    return isRefused;
}

}  // namespace

std::optional<Address> addressFromUri(std::string_view uri) {
    constexpr std::string_view kTcp = "tcp://";
    constexpr std::string_view kUnix = "unix://";
    if (uri == "stdio://") {
        return StandardStreams{};
    }
    if (uri.starts_with(kTcp)) {
        return tcpAddress(uri.substr(kTcp.size()));
    }
    return uri.starts_with(kUnix) && uri.size() > kUnix.size()
               ? std::optional<Address>(UnixAddress{std::string(uri.substr(kUnix.size()))})
               : std::nullopt;
}

void ListeningSocket::listen(int family, const sockaddr* address, socklen_t length) {
    descriptor_ = ::socket(family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor_ < 0 || ::setsockopt(descriptor_, SOL_SOCKET, SO_REUSEADDR, &kOn, sizeof(kOn)) != 0 ||
        ::bind(descriptor_, address, length) != 0 || ::listen(descriptor_, SOMAXCONN) != 0) {
        const int error = errno;
        ::close(descriptor_);
        fail(uri_, error);
    }
}

ListeningSocket::ListeningSocket(const TcpAddress& address) {
    const std::string host = address.host.find(':') == std::string::npos ? address.host : "[" + address.host + "]";
    uri_ = "tcp://" + host + ":" + address.port;
    const Resolved resolved = resolve(address);
    if (!resolved) {
        fail(uri_, EADDRNOTAVAIL);
    }
    listen(resolved->ai_family, resolved->ai_addr, resolved->ai_addrlen);
    uri_ = "tcp://" + host + ":" + std::to_string(portOf(descriptor_));
}

ListeningSocket::ListeningSocket(const UnixAddress& address) : uri_("unix://" + address.path), path_(address.path) {
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    if (path_.size() >= sizeof(name.sun_path)) {
        fail(uri_, ENAMETOOLONG);
    }
    std::memcpy(name.sun_path, path_.data(), path_.size());
    if (isStale(name)) {
        ::unlink(path_.c_str());
    }
    constexpr mode_t kAllButOwnersUse = 0177;
    const mode_t former = ::umask(kAllButOwnersUse);  // from the first moment, so not afterwards
    listen(AF_UNIX, reinterpret_cast<const sockaddr*>(&name), sizeof(name));
    ::umask(former);
    ::lstat(path_.c_str(), &made_);
}

ListeningSocket::~ListeningSocket() {
    struct stat now {};
    if (!path_.empty() && ::lstat(path_.c_str(), &now) == 0 && now.st_ino == made_.st_ino &&
        now.st_dev == made_.st_dev) {
        ::unlink(path_.c_str());
    }
    ::close(descriptor_);
}

}  // namespace lunabrook::wyoming
