#include <algorithm>
#include <iostream>

#include "command/verbs.h"
#include "host/json_output.h"
#include "metrics/group_metrics.h"
#include "voice/near_names.h"

namespace lunabrook {

namespace {

struct NamedRequest {
    const char* name;
    std::optional<Dictionary> (GroupMetrics::*request)();
};

constexpr NamedRequest kRequests[] = {
    {"requestQuality", &GroupMetrics::requestQuality},
    {"requestSpO2", &GroupMetrics::requestSpO2},
    {"requestRespRate", &GroupMetrics::requestRespRate},
    {"requestWristTemp", &GroupMetrics::requestWristTemp},
    {"requestReadiness", &GroupMetrics::requestReadiness},
    {"requestOctane", &GroupMetrics::requestOctane},
    {"requestConsistencyDict", &GroupMetrics::requestConsistencyDict},
    {"requestSleepBank", &GroupMetrics::requestSleepBank},
};

std::vector<std::string> requestNames() {
    std::vector<std::string> names;
    for (const NamedRequest& row : kRequests) {
        names.emplace_back(row.name);
    }
    return names;
}

const NamedRequest* requestNamed(const std::string& name) {
    const auto* row = std::find_if(std::begin(kRequests), std::end(kRequests),
                                   [&name](const NamedRequest& candidate) { return name == candidate.name; });
    return row == std::end(kRequests) ? nullptr : row;
}

}  // namespace

ExitStatus showMetrics(const Device& device, const std::vector<std::string>& requests) {
    const std::vector<std::string> names = requests.empty() ? requestNames() : requests;
    for (const std::string& name : names) {
        if (requestNamed(name) == nullptr) {
            return complain("no metric request is called \"" + name + "\"" + suggestion(name, requestNames()) +
                            " (`lunabrook metrics --help` lists all)");
        }
    }
    GroupMetrics metrics(device);
    Json json = Json::object();
    for (const std::string& name : names) {
        const std::optional<Dictionary> result = (metrics.*requestNamed(name)->request)();
        json[name] = result ? jsonFromDictionary(*result) : Json();
    }
    constexpr int kIndent = 2;
    std::cout << jsonText(json, kIndent);
    return ExitStatus::answered;
}

}  // namespace lunabrook
