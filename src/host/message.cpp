#include "host/message.h"

#include <iostream>

#include "platform/text/display_width.h"

namespace lunabrook {

void tell(std::string_view program, const std::string& what) {
    std::cout.flush();
    std::cerr << program << ": " << escapedText(what) << "\n";
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
