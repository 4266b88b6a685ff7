// The intents service as an object on the bus: kestrovan.Lunabrook.Intents1 at /kestrovan/Lunabrook.
//
//   busctl --user call kestrovan.Lunabrook /kestrovan/Lunabrook kestrovan.Lunabrook.Intents1 Handle s ReadinessIntent
//   -> a{sv} 3 "code" x 4 "dictionary" s "{...}" "response" s "..."
//
// Each call makes its own principal class and sees the store, the zone and the clock as they are now. The device is
// kept while the zone and the texts stay the same, so that an unchanged store is not read again however many days it
// holds. What a call finds wrong with the store or the texts is told on standard error, by every call that meets it.

#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/device_options.h"
#include "host/fault_list.h"
#include "intents1_adaptor.h"

namespace lunabrook {

inline constexpr const char* kIntentsServiceName = "kestrovan.Lunabrook";
inline constexpr const char* kIntentsServicePath = "/kestrovan/Lunabrook";
inline constexpr const char* kIntentsServiceProgram = "lunabrook-intents";

class IntentsService : public sdbus::AdaptorInterfaces<kestrovan::Lunabrook::Intents1_adaptor> {
public:
    // Serves from here on; the connection outlives it.
    IntentsService(sdbus::IConnection& connection, DeviceOptions options);
    ~IntentsService();
    IntentsService(const IntentsService&) = delete;
    IntentsService& operator=(const IntentsService&) = delete;

private:
    using DefinedIntent = sdbus::Struct<std::string, std::string, std::vector<std::string>>;

    std::map<std::string, sdbus::Variant> Handle(const std::string& intentClass) override;
    std::string Recognize(const std::string& phrase) override;
    std::map<std::string, sdbus::Variant> Describe(const std::string& intentClass) override;
    std::vector<DefinedIntent> Intents() override;

    const Device& deviceNow();
    template <class Answer>
    auto answerOnDevice(Answer answer);

    DeviceOptions options_;
    FaultList faults_;  // of the call that is being answered
    std::unique_ptr<Device> device_;
};

}  // namespace lunabrook
