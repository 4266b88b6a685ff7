#include "platform/device/device.h"

#include "platform/files/private/suite_file.h"

namespace lunabrook {

Device::Device(Settings settings)
    : settings_(std::move(settings)),
      bundle_(settings_.bundle, settings_.preferredLanguages, [this](const Fault& fault) { tellFault(fault); }) {}

Device::~Device() = default;

std::shared_ptr<SuiteFile> Device::suiteFile(std::string_view suite) const {
    auto file = suiteFiles_.find(suite);
    if (file == suiteFiles_.end()) {
        const std::string name(suite);
        auto made = std::make_shared<SuiteFile>(settings_.preferences / (name + ".plist"), settings_.dropsWrites,
                                                [this](const Fault& fault) { tellFault(fault); });
        file = suiteFiles_.emplace(name, std::move(made)).first;
    }
    return file->second;
}

}  // namespace lunabrook
