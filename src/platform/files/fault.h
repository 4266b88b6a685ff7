// A fault in something that the device reads or writes: a store, a string table.
//
// Nothing below the host prints; a fault is told to the device's listener and the answer goes on as if the
// damaged thing were empty.

#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace lunabrook {

struct Fault {
    std::filesystem::path file;
    int line = 0;      // 1 for the first; 0 when the fault has no line
    std::string what;  // "nested deeper than 128 levels; nothing was read from it"

    friend bool operator==(const Fault&, const Fault&) = default;
};

using FaultListener = std::function<void(const Fault&)>;

}  // namespace lunabrook
