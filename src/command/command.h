// The command `lunabrook`: arguments -> device -> verb -> exit status.

#pragma once

namespace lunabrook {

// 0 answered, 1 an answer with code 5, nothing delivered to the watch or output that cannot be written, 2 a wrong call,
// 3 a fault in the store or a string table; of several, the gravest.
int runCommand(int argc, char** argv);

}  // namespace lunabrook
