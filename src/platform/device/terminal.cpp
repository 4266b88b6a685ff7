#include "platform/device/terminal.h"

#include <unistd.h>

namespace lunabrook {

bool standardInputIsTerminal() { return ::isatty(STDIN_FILENO) != 0; }
bool standardOutputIsTerminal() { return ::isatty(STDOUT_FILENO) != 0; }

}  // namespace lunabrook
