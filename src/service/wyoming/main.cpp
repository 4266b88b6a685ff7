#include "service/wyoming/service_main.h"

int main(int argc, char** argv) { return lunabrook::wyoming::runService(argc, argv); }
