// A process for each connection: what one client sends can slow down or end no other client's conversation.

#pragma once

#include <functional>

namespace lunabrook::wyoming {

// More clients wait until a connection ends, which the idle time sees to.
inline constexpr std::size_t kMostConnections = 32;

// Accepts on the socket and calls `serve` with each connection, in a process of its own, which ends with the call.
// Returns when the process is told to stop (SIGTERM, SIGINT), after all of its children were told and have ended.
// `ready` is called once no stop can be missed.
void serveConnections(int listening, const std::function<void()>& ready, const std::function<void(int)>& serve);

}  // namespace lunabrook::wyoming
