#include <algorithm>
#include <iostream>

#include "command/verbs.h"
#include "host/json_output.h"
#include "intents/intent_dispatch.h"
#include "metrics/group_metrics.h"
#include "platform/text/display_width.h"
#include "platform/text/near_names.h"

namespace lunabrook {

namespace {

struct NamedRequest {
    const char* shortName;
    const char* name;
    std::optional<Dictionary> (GroupMetrics::*request)();
};

constexpr NamedRequest kRequests[] = {
    {"sleep-rings", "requestQuality", &GroupMetrics::requestQuality},
    {"blood-oxygen", "requestSpO2", &GroupMetrics::requestSpO2},
    {"respiration", "requestRespRate", &GroupMetrics::requestRespRate},
    {"wrist-temperature", "requestWristTemp", &GroupMetrics::requestWristTemp},
    {"readiness", "requestReadiness", &GroupMetrics::requestReadiness},
    {"sleep-fuel", "requestOctane", &GroupMetrics::requestOctane},
    {"bedtime-consistency", "requestConsistencyDict", &GroupMetrics::requestConsistencyDict},
    {"latest-bedtime", "requestSleepBank", &GroupMetrics::requestSleepBank},
};

std::vector<KnownName> requestNames() {
    std::vector<KnownName> names;
    for (const NamedRequest& row : kRequests) {
        names.push_back({row.shortName, row.shortName});
        names.push_back({row.name, row.shortName});
    }
    return names;
}

// By its own name, or as the intent that speaks of it is called: "requestSpO2", "blood-oxygen", "SleepSpO2Intent".
const NamedRequest* requestNamed(const std::string& name) {
    const IntentRoute* route = intentRouteNamed(name);
    const std::string key = route != nullptr ? std::string(route->shortName) : nameKey(name);
    const auto* row = std::find_if(std::begin(kRequests), std::end(kRequests), [&key](const NamedRequest& candidate) {
        return key == candidate.shortName || key == nameKey(candidate.name);
    });
    return row == std::end(kRequests) ? nullptr : row;
}

}  // namespace

ExitStatus showMetrics(const Device& device, const std::vector<std::string>& names) {
    std::vector<const NamedRequest*> requests;
    for (const std::string& name : names) {
        requests.push_back(requestNamed(name));
        if (requests.back() == nullptr) {
            return complain("no metric is called " + quotedText(name) + suggestion(name, requestNames()) +
                            " (`lunabrook metrics --help` lists all)");
        }
    }
    if (requests.empty()) {
        std::transform(std::begin(kRequests), std::end(kRequests), std::back_inserter(requests),
                       [](const NamedRequest& request) { return &request; });
    }
    GroupMetrics metrics(device);
    Json json = Json::object();
    for (const NamedRequest* request : requests) {
        const std::optional<Dictionary> result = (metrics.*request->request)();
        json[request->name] = result ? jsonFromDictionary(*result) : Json();
    }
    constexpr int kIndent = 2;
    std::cout << jsonText(json, kIndent);
    return ExitStatus::answered;
}

}  // namespace lunabrook
