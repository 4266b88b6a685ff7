// The extension main loop: what the operating system runs to have intents answered.
//
//   lunabrook-intents --idle-seconds 30
//
// Owns the name kestrovan.Lunabrook on the session bus, answers one call at a time and leaves when no call came for the
// idle time; the bus starts it again for the next call.

#pragma once

namespace lunabrook {

// The exit status: 0 left because nobody called or because it was told to (SIGTERM, SIGINT), 1 no bus or the name is
// another's, 2 a wrong call. What is wrong is one line on standard error.
int NSExtensionMain(int argc, char** argv);

}  // namespace lunabrook
