// The faults that a device was told while it answered, each once, for standard error.
//
//   lunabrook: /home/ada/lunabrook/group.kestrovan.Lunabrook.plist is larger than 64 MiB; it is left as it is ...

#pragma once

#include <string_view>
#include <vector>

#include "platform/files/fault.h"

namespace lunabrook {

class FaultList {
public:
    // Outlived by the list.
    FaultListener listener();

    bool empty() const { return faults_.empty(); }

    // A line for each that has not been told yet, after the answer on standard output.
    void tell(std::string_view program);

private:
    std::vector<Fault> faults_;
    std::size_t told_ = 0;
};

}  // namespace lunabrook
