#include <algorithm>
#include <iostream>
#include <iterator>
#include <variant>

#include "command/verbs.h"
#include "host/json_output.h"
#include "host/message.h"
#include "intents/intent_dispatch.h"
#include "intents/intent_handler.h"
#include "platform/device/line_input.h"
#include "platform/device/terminal.h"
#include "platform/text/display_width.h"
#include "platform/text/near_names.h"
#include "platform/text/text_case.h"
#include "voice/intent_definitions.h"
#include "voice/phrase_recognizer.h"

namespace lunabrook {

namespace {

constexpr const char* kBlanks = " \t\r\n";
constexpr const char* kWhereAllAre = " (`lunabrook intents` lists all nine)";

std::vector<KnownName> intentNames() {
    std::vector<KnownName> names;
    for (const IntentRoute& route : intentRoutes()) {
        names.push_back({std::string(route.shortName), std::string(route.shortName)});
        names.push_back({std::string(route.className), std::string(route.shortName)});
    }
    return names;
}

std::string unclearText(const std::string& text, const std::vector<std::string>& nearest) {
    std::vector<std::string> phrases;
    std::transform(nearest.begin(), nearest.end(), std::back_inserter(phrases), quotedText);
    return "no intent answers to " + quotedText(text) +
           (phrases.empty() ? "" : "; the nearest phrases are " + listed(phrases, " and ")) + kWhereAllAre;
}

// By its title in the device's language; an English one is a name.
const IntentRoute* routeTitled(const Device& device, const std::string& text) {
    for (const IntentDefinition& definition : intentDefinitions(device)) {
        if (lowercaseString(definition.title) == lowercaseString(text)) {
            return intentRouteNamed(definition.className);
        }
    }
    return nullptr;
}

struct Unclear {
    std::string why;
};
using Understood = std::variant<const IntentRoute*, Unclear>;

// A name first: that takes no templates. What is no phrase either may be a mistyped name.
Understood understand(const Device& device, const std::string& text) {
    if (const IntentRoute* route = intentRouteNamed(text)) {
        return route;
    }
    const Recognition recognition = recognizePhrase(device, text);
    if (const IntentRoute* route = intentRouteNamed(recognition.className)) {
        return route;
    }
    if (const IntentRoute* route = routeTitled(device, text)) {
        return route;
    }
    if (text.find_first_of(kBlanks) == std::string::npos) {
        if (const std::string near = suggestion(text, intentNames()); !near.empty()) {
            return Unclear{"no intent is called " + quotedText(text) + near + kWhereAllAre};
        }
    }
    return Unclear{unclearText(text, recognition.nearest)};
}

Json jsonFromText(const std::optional<std::string>& text) { return text ? Json(*text) : Json(); }

void printJson(const IntentRoute& route, const IntentReply& reply) {
    constexpr int kOneLine = -1;
    std::cout << jsonText({{"intent", route.className},
                           {"code", static_cast<std::int64_t>(reply.code)},
                           {"response", jsonFromText(reply.response)},
                           {"dictionary", jsonFromText(reply.dictionary)}},
                          kOneLine);
}

void tellFailure(const Device& device, const IntentRoute& route) {
    if (const auto definition = intentDefinition(device, route.className)) {
        tell("lunabrook", definition->failure.text);
    }
}

ExitStatus answer(const Device& device, IntentHandler& handler, const IntentRoute& route, bool asJson) {
    const IntentReply reply = route.ask(handler);
    const bool hasFailed = reply.code == IntentResponseCode::failure;
    if (asJson) {
        printJson(route, reply);
    } else {
        const std::string response = reply.response.value_or("");
        std::cout << (standardOutputIsTerminal() ? withoutControls(response) : response)
                  << "\n";  // an empty line keeps the answers in step with the call
        if (hasFailed) {
            tellFailure(device, route);
        }
    }
    return hasFailed ? ExitStatus::failed : ExitStatus::answered;
}

std::string trimmed(const std::string& line) {
    const std::size_t start = line.find_first_not_of(kBlanks);
    return start == std::string::npos ? "" : line.substr(start, line.find_last_not_of(kBlanks) + 1 - start);
}

// What a person at a terminal may say besides; false when it is none of it.
bool isWordOfTheConversation(const Device& device, const std::string& text, bool& goesOn) {
    const std::string key = nameKey(text);
    if (key == "help" || key == "?") {
        std::cerr << "Say one of these, in words of your own or by name; quit or Ctrl-D ends.\n";
        listIntents(device, std::cerr);
        return true;
    }
    goesOn = key != "quit" && key != "exit";
    return !goesOn;
}

}  // namespace

ExitStatus ask(const Device& device, const std::vector<std::string>& intents, bool asJson) {
    std::vector<const IntentRoute*> routes;
    for (const std::string& text : intents) {
        const Understood understood = understand(device, text);
        if (const auto* unclear = std::get_if<Unclear>(&understood)) {
            return complain(unclear->why);
        }
        routes.push_back(std::get<const IntentRoute*>(understood));
    }
    IntentHandler handler(device);
    ExitStatus status = ExitStatus::answered;
    for (const IntentRoute* route : routes) {
        status = std::max(status, answer(device, handler, *route, asJson));
    }
    return status;
}

ExitStatus askLines(const Device& device, bool asJson, const std::function<void()>& afterEach) {
    const bool isConversation = standardInputIsTerminal();
    if (isConversation) {
        std::cerr << "Say a phrase such as \"How ready am I today?\"; help shows more, quit or Ctrl-D ends.\n";
    }
    LineInput input;
    ExitStatus status = ExitStatus::answered;
    bool goesOn = true;
    while (goesOn && std::cout) {  // without it nobody hears the answers
        const auto line = input.next();
        if (!line) {
            break;
        }
        if (line->size() >= LineInput::kMostBytes) {
            status = std::max(status, complain("a line is longer than anybody speaks"));
            continue;
        }
        const std::string text = trimmed(*line);
        if (!text.empty() && !(isConversation && isWordOfTheConversation(device, text, goesOn))) {
            status = std::max(status, ask(device, {text}, asJson));
            afterEach();
        }
        std::cout.flush();
    }
    if (input.hasFailed()) {
        complain("the input cannot be read to its end");
        status = std::max(status, ExitStatus::failed);
    }
    return status;
}

}  // namespace lunabrook
