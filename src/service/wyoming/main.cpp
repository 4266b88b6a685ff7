#include "host/program_entry.h"
#include "service/wyoming/service_main.h"

int main(int argc, char** argv) {
    return lunabrook::runProgram("lunabrook-wyoming", &lunabrook::wyoming::runService, argc, argv);
}
