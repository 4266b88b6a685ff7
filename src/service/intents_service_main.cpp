#include "service/extension_main.h"

int main(int argc, char** argv) { return lunabrook::NSExtensionMain(argc, argv); }
