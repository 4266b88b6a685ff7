#include "host/fault_list.h"

#include <algorithm>

#include "host/message.h"

namespace lunabrook {

FaultListener FaultList::listener() {
    return [this](const Fault& fault) {
        if (std::find(faults_.begin(), faults_.end(), fault) == faults_.end()) {
            faults_.push_back(fault);
        }
    };
}

void FaultList::tell(std::string_view program) {
    for (; told_ < faults_.size(); ++told_) {
        const Fault& fault = faults_[told_];
        const std::string line = fault.line > 0 ? ":" + std::to_string(fault.line) + ":" : "";
        lunabrook::tell(program, fault.file.string() + line + " " + fault.what);
    }
}

}  // namespace lunabrook
