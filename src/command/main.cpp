#include "command/command.h"
#include "host/program_entry.h"

int main(int argc, char** argv) { return lunabrook::runProgram("lunabrook", &lunabrook::runCommand, argc, argv); }
