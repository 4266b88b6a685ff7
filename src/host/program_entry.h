// What is the same at the entry of every program.

#pragma once

#include <csignal>
#include <iostream>
#include <new>

namespace lunabrook {

// Runs the program: a limit for the size of files is a failed write, not its end, and when memory runs out it says so.
inline int runProgram(const char* name, int (*body)(int, char**), int argc, char** argv) {
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return body(argc, argv);
    } catch (const std::bad_alloc&) {
        constexpr int kFault = 3;
        std::cerr << name << ": there is not enough memory\n";
        return kFault;
    }
}

}  // namespace lunabrook
