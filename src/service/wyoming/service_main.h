// The voice-assistant service as a program: lunabrook-wyoming --uri stdio://

#pragma once

namespace lunabrook::wyoming {

// The exit status: 0 the client has gone or the service was told to stop (SIGTERM, SIGINT), 1 it cannot listen, 2 a
// wrong call. What is wrong is one line on standard error.
int runService(int argc, char** argv);

}  // namespace lunabrook::wyoming
