#include "platform/device/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace lunabrook {

bool standardInputIsTerminal() { return ::isatty(STDIN_FILENO) != 0; }
bool standardOutputIsTerminal() { return ::isatty(STDOUT_FILENO) != 0; }

std::optional<int> standardOutputColumns() {
    winsize size{};
    const bool isKnown = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? std::optional<int>(size.ws_col) : std::nullopt;
}

}  // namespace lunabrook
