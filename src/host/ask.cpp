#include <iostream>

#include "host/json_output.h"
#include "host/near_names.h"
#include "host/verbs.h"
#include "intents/intent_dispatch.h"
#include "intents/intent_handler.h"

namespace lunabrook {

namespace {

std::vector<std::string> intentNames() {
    std::vector<std::string> names;
    for (const IntentRoute& route : intentRoutes()) {
        names.emplace_back(route.shortName);
    }
    for (const IntentRoute& route : intentRoutes()) {
        names.emplace_back(route.className);
    }
    return names;
}

Json jsonFromText(const std::optional<std::string>& text) { return text ? Json(*text) : Json(); }

void print(const IntentRoute& route, const IntentReply& reply, bool asJson) {
    if (!asJson) {
        std::cout << reply.response.value_or("") << "\n";
        return;
    }
    constexpr int kOneLine = -1;
    std::cout << jsonText({{"intent", route.className},
                           {"code", static_cast<std::int64_t>(reply.code)},
                           {"response", jsonFromText(reply.response)},
                           {"dictionary", jsonFromText(reply.dictionary)}},
                          kOneLine);
}

}  // namespace

ExitStatus ask(const Device& device, const std::vector<std::string>& intents, bool asJson) {
    std::vector<const IntentRoute*> routes;
    for (const std::string& name : intents) {
        routes.push_back(intentRouteNamed(name));
        if (routes.back() == nullptr) {
            return complain("no intent is called \"" + name + "\"" + suggestion(name, intentNames()) +
                            " (`lunabrook intents` lists all nine)");
        }
    }
    IntentHandler handler(device);
    ExitStatus status = ExitStatus::answered;
    for (const IntentRoute* route : routes) {
        const IntentReply reply = route->ask(handler);
        print(*route, reply, asJson);
        if (reply.code == IntentResponseCode::failure) {
            status = ExitStatus::failed;
        }
    }
    return status;
}

}  // namespace lunabrook
