#include "platform/device/standard_output.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <iostream>

namespace lunabrook {

StandardOutput::StandardOutput() : former_(std::cout.rdbuf(this)) {
    std::signal(SIGPIPE, SIG_IGN);
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (::fcntl(stream, F_GETFD) < 0) {
            static_cast<void>(
                ::open("/", O_RDONLY));  // takes the lowest free number, and can be neither read nor written
        }
    }
    setp(buffer_.begin(), buffer_.end());
}

StandardOutput::~StandardOutput() {
    finish();
    std::cout.rdbuf(former_);
}

int StandardOutput::finish() {
    StandardOutput::sync();  // by its name, since the destructor comes here too
    return error_;
}

StandardOutput::int_type StandardOutput::overflow(int_type character) {
    if (sync() != 0) {
        return traits_type::eof();
    }
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        sputc(traits_type::to_char_type(character));
    }
    return traits_type::not_eof(character);
}

int StandardOutput::sync() {
    for (const char* start = pbase(); start != pptr() && error_ == 0;) {
        const ssize_t count = ::write(STDOUT_FILENO, start, static_cast<std::size_t>(pptr() - start));
        start += count > 0 ? count : 0;
        error_ = count < 0 && errno != EINTR && errno != EAGAIN ? errno : 0;
        if (count < 0 && errno == EAGAIN) {
            pollfd reader = {.fd = STDOUT_FILENO, .events = POLLOUT, .revents = 0};
            ::poll(&reader, 1, -1);  // a pipe that is not waited for by itself
        }
    }
    setp(buffer_.begin(), buffer_.end());
    return error_ == 0 ? 0 : -1;
}

}  // namespace lunabrook
