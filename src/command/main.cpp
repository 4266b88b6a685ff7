#include "command/command.h"

int main(int argc, char** argv) { return lunabrook::runCommand(argc, argv); }
