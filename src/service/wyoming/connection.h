// One client's connection: events come in, answers go out, until the client has gone, says nothing for a while or sends
// what is no event.

#pragma once

#include <chrono>

#include "service/wyoming/conversation.h"

namespace lunabrook::wyoming {

using Seconds = std::chrono::duration<double>;

// The descriptors may be one socket, or two pipes or files; they stay open. Ends when the idle time passes without a
// whole event, however much of one came, and, between two events, when the process is told to stop (SIGTERM, SIGINT).
// After what is no event, and after half of one, an `error` is the last answer.
void serveConnection(int input, int output, const Conversation& conversation, Seconds idleTime);

}  // namespace lunabrook::wyoming
