// The command `lunabrook`: arguments -> device -> verb -> exit status.

#pragma once

namespace lunabrook {

// 0 answered, 1 an answer with code 5, 2 a wrong call, 3 a fault in the store or a string table.
int runCommand(int argc, char** argv);

}  // namespace lunabrook
