// What is the same at the entry of every program.

#pragma once

#include <csignal>
#include <exception>
#include <iostream>
#include <new>

namespace lunabrook {

// Runs the program: a limit for the size of files is a failed write, not its end, and when memory or threads
// run out it says so.
inline int runProgram(const char* name, int (*body)(int, char**), int argc, char** argv) {
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return body(argc, argv);
    } catch (const std::exception& error) {
        constexpr int kFault = 3;
        const bool isMemory = dynamic_cast<const std::bad_alloc*>(&error) != nullptr;
        std::cerr << name << ": " << (isMemory ? "there is not enough memory" : error.what()) << "\n";
        return kFault;
    }
}

}  // namespace lunabrook
