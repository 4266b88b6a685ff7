#include "host/message.h"

#include <iostream>

#include "platform/text/display_width.h"

namespace lunabrook {

void tell(std::string_view program, const std::string& what) {
    std::cout.flush();
    std::cerr << std::string(program) + ": " + escapedText(what) + "\n";  // in one write: others may tell theirs there
}

std::optional<std::string> whatIsWrongWithDevice(std::string_view program, const DeviceOptions& device) {
    const auto found = findDevice(device);
    if (const auto* wrong = std::get_if<WrongCall>(&found)) {
        return wrong->what;
    }
    for (const std::string& note : std::get<FoundDevice>(found).notes) {
        tell(program, note);
    }
    return std::nullopt;
}

}  // namespace lunabrook
