#include <algorithm>
#include <cstdio>
#include <iostream>
#include <variant>

#include "command/verbs.h"
#include "host/json_output.h"
#include "intents/intent_dispatch.h"
#include "intents/intent_handler.h"
#include "platform/device/terminal.h"
#include "platform/text/display_width.h"
#include "voice/intent_definitions.h"
#include "voice/near_names.h"
#include "voice/phrase_recognizer.h"

namespace lunabrook {

namespace {

constexpr const char* kBlanks = " \t\r\n";
constexpr const char* kWhereAllAre = " (`lunabrook intents` lists all nine)";

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

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

std::string unclearText(const std::string& text, const std::vector<std::string>& nearest) {
    std::string list;
    for (std::size_t i = 0; i < nearest.size(); ++i) {
        list += (i == 0 ? "; the nearest phrases are " : i + 1 == nearest.size() ? " and " : ", ") + quoted(nearest[i]);
    }
    constexpr int kColumns = 60;
    return "no intent answers to " + quoted(textFittedTo(text, kColumns)) + list + kWhereAllAre;
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
    if (text.find_first_of(kBlanks) == std::string::npos) {
        if (const std::string near = suggestion(text, intentNames()); !near.empty()) {
            return Unclear{"no intent is called " + quoted(text) + near + kWhereAllAre};
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
    std::cout.flush();
    for (const IntentDefinition& definition : intentDefinitions(device)) {
        if (definition.className == route.className) {
            std::cerr << "lunabrook: " << definition.failure.text << "\n";
        }
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

// False at the end of the input. What is longer than anybody speaks is cut off and understood by nobody.
bool readLine(std::string& line) {
    constexpr std::size_t kMostBytes = std::size_t{64} << 10;
    line.clear();
    for (int byte = std::cin.get(); byte != std::istream::traits_type::eof(); byte = std::cin.get()) {
        if (byte == '\n') {
            return true;
        }
        if (line.size() < kMostBytes) {
            line += static_cast<char>(byte);
        }
    }
    return !line.empty();
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
    const auto prompt = [isConversation](const char* text) {
        if (isConversation) {
            std::cout.flush();
            std::cerr << text;
        }
    };
    prompt("Say a phrase such as \"How ready am I today?\"; Ctrl-D ends.\n");
    ExitStatus status = ExitStatus::answered;
    for (std::string line; prompt("> "), readLine(line);) {
        if (const std::string text = trimmed(line); !text.empty()) {
            status = std::max(status, ask(device, {text}, asJson));
            std::cout.flush();
            afterEach();
        }
        if (!std::cout) {
            break;  // nobody hears the answers
        }
    }
    prompt("\n");
    if (std::ferror(stdin) != 0) {
        complain("the input cannot be read to its end");
        status = std::max(status, ExitStatus::failed);
    }
    return status;
}

}  // namespace lunabrook
