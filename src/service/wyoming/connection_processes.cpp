#include "service/wyoming/connection_processes.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <exception>
#include <iostream>
#include <set>

#include "service/wyoming/conversation.h"

namespace lunabrook::wyoming {

namespace {

constexpr int kForever = -1;
constexpr int kPauseMilliseconds = 1000;

class ConnectionProcesses {
public:
    ConnectionProcesses(int listening, const std::function<void(int)>& serve) : listening_(listening), serve_(serve) {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : {SIGTERM, SIGINT, SIGCHLD}) {
            sigaddset(&signals, signal);
        }
        ::sigprocmask(SIG_BLOCK, &signals, nullptr);
        ::signal(SIGCHLD, SIG_DFL);  // where who started us ignores it, nobody hears of a child's end
        signals_ = ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    }
    ~ConnectionProcesses() {
        for (const pid_t child : children_) {
            ::kill(child, SIGTERM);
        }
        for (const pid_t child : children_) {
            ::waitpid(child, nullptr, 0);
        }
        ::close(signals_);
    }
    ConnectionProcesses(const ConnectionProcesses&) = delete;
    ConnectionProcesses& operator=(const ConnectionProcesses&) = delete;

    void run() {
        bool isShort = false;  // of memory, descriptors or processes; which passes
        for (;;) {
            const bool isOpen = !isShort && children_.size() < kMostConnections;
            pollfd polled[] = {{.fd = signals_, .events = POLLIN, .revents = 0},
                               {.fd = isOpen ? listening_ : -1, .events = POLLIN, .revents = 0}};
            ::poll(polled, std::size(polled), isShort ? kPauseMilliseconds : kForever);
            if (isToldToStop()) {
                return;
            }
            reap();
            isShort = polled[1].revents != 0 && !accept();
        }
    }

private:
    bool isToldToStop() const {
        bool isTold = false;
        for (signalfd_siginfo signal{}; ::read(signals_, &signal, sizeof(signal)) == sizeof(signal);) {
            isTold = isTold || signal.ssi_signo != SIGCHLD;
        }
        return isTold;
    }

    void reap() {
        std::erase_if(children_, [](pid_t child) { return ::waitpid(child, nullptr, WNOHANG) == child; });
    }

    // False when the system is short of something. A client that has gone already is none.
    bool accept() {
        const int connection = ::accept4(listening_, nullptr, nullptr, SOCK_CLOEXEC);
        if (connection < 0) {
            return errno != EMFILE && errno != ENFILE && errno != ENOBUFS && errno != ENOMEM;
        }
        const pid_t self = ::getpid();
        const pid_t child = ::fork();
        if (child == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGTERM);
            if (::getppid() == self) {
                ::close(listening_);
                ::close(signals_);
                serveAlone(connection);
            }
            ::_exit(0);  // what else this process holds is its parent's
        }
        ::close(connection);
        if (child > 0) {
            children_.insert(child);
        }
        return child > 0;
    }

    // What is thrown must not unwind what the parent holds, too.
    void serveAlone(int connection) const {
        try {
            serve_(connection);
        } catch (const std::exception& error) {
            std::cerr << kProgram << ": " << error.what() << "\n";
        }
    }

    int listening_;
    const std::function<void(int)>& serve_;
    int signals_ = -1;
    std::set<pid_t> children_;
};

}  // namespace

void serveConnections(int listening, const std::function<void()>& ready, const std::function<void(int)>& serve) {
    ConnectionProcesses processes(listening, serve);
    ready();
    processes.run();
}

}  // namespace lunabrook::wyoming
