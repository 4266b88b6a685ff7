// A shell command run to its end: shell("echo a; false") is {"a\n", 1}.

#pragma once

#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace lunabrook::test {

struct Ended {
    std::string output;
    int status = -1;  // -1 when a signal ended it
};

inline Ended shell(const std::string& command) {
    Ended ended;
    FILE* pipe = popen(command.c_str(), "r");
    for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe)) {
        ended.output += static_cast<char>(byte);
    }
    const int status = pclose(pipe);
    ended.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return ended;
}

}  // namespace lunabrook::test
