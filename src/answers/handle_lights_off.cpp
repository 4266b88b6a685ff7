#include "answers/handle_lights_off.h"

#include "metrics/store_keys.h"
#include "platform/text/string_format.h"

namespace lunabrook {

std::optional<Dictionary> HandleLightsOff::turnLightsOff() {
    if (!groupPrefs_) {
        groupPrefs_ = std::make_unique<UserDefaults>(device_, kGroupSuite);
    }
    if (!formatTools_) {
        formatTools_ = std::make_unique<FormatTools>(device_);
    }
    const Date now = device_.now();
    groupPrefs_->setObject(kActiveLightSwitch, now);
    groupPrefs_->synchronize();

    Dictionary answer;
    answer.emplace(kStatusLabel,
                   stringWithFormat("%@ %@.\n%@", {device_.localizedString("💤 In bed at"), formatTools_->dayTime(now),
                                                   device_.localizedString("Open app to cancel.")}));
    answer.emplace(kResponse, device_.localizedString("Good Night"));
    return answer;
}

}  // namespace lunabrook
