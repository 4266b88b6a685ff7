#include "host/program_entry.h"
#include "service/bus/extension_main.h"

int main(int argc, char** argv) {
    return lunabrook::runProgram("lunabrook-intents", &lunabrook::NSExtensionMain, argc, argv);
}
