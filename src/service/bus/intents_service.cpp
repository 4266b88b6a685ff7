#include "service/bus/intents_service.h"

#include <algorithm>
#include <exception>
#include <nlohmann/json.hpp>
#include <string_view>

#include "intents/intent_dispatch.h"
#include "intents/intent_handler.h"
#include "platform/text/display_width.h"
#include "platform/text/text_case.h"
#include "voice/intent_definitions.h"
#include "voice/phrase_recognizer.h"

namespace lunabrook {

namespace {

constexpr const char* kFailed = "org.freedesktop.DBus.Error.Failed";
constexpr const char* kUnknownIntent = "kestrovan.Lunabrook.Error.UnknownIntent";
constexpr const char* kUnknownPhrase = "kestrovan.Lunabrook.Error.UnknownPhrase";

// The bus cuts off who sends text that is not UTF-8, and ends a text at a zero.
std::string busText(const std::string& text) {
    using nlohmann::json;
    const std::string repaired =
        json::parse(json(text).dump(-1, ' ', false, json::error_handler_t::replace)).get<std::string>();
    return stringByReplacing(repaired, std::string_view("\0", 1), "\uFFFD");
}

std::vector<std::string> busTexts(const std::vector<std::string>& texts) {
    std::vector<std::string> fit;
    std::transform(texts.begin(), texts.end(), std::back_inserter(fit), busText);
    return fit;
}

sdbus::Struct<int, std::string> busOutcome(const IntentDefinition::Outcome& outcome) {
    return {outcome.code, busText(outcome.text)};
}

const IntentRoute& routeOfClass(const std::string& intentClass) {
    std::string known;
    for (const IntentRoute& route : intentRoutes()) {
        if (intentClass == route.className) {
            return route;
        }
        known += (known.empty() ? "" : ", ") + std::string(route.className);
    }
    throw sdbus::Error(kUnknownIntent, "no intent has the class " + quotedText(intentClass) + "; there are " + known);
}

sdbus::Error unclearPhrase(const std::string& phrase, const std::vector<std::string>& nearest) {
    std::string message = "no intent is clearly meant by " + quotedText(phrase);
    for (const std::string& near : nearest) {
        message += (&near == &nearest.front() ? "; the nearest phrases are " : ", ") + quotedText(busText(near));
    }
    return {kUnknownPhrase, message};
}

}  // namespace

IntentsService::IntentsService(sdbus::IConnection& connection, DeviceOptions options)
    : AdaptorInterfaces(connection, kIntentsServicePath), options_(std::move(options)) {
    registerAdaptor();
}

IntentsService::~IntentsService() { unregisterAdaptor(); }

const Device& IntentsService::deviceNow() {
    auto found = findDevice(options_);
    if (const auto* wrong = std::get_if<WrongCall>(&found)) {
        throw sdbus::Error(kFailed, busText(wrong->what));
    }
    auto& now = std::get<FoundDevice>(found).settings;
    if (!device_ || device_->timeZone() != now.timeZone || !device_->bundle().isCurrent()) {
        now.faults = faults_.listener();
        device_ = std::make_unique<Device>(std::move(now));
    }
    return *device_;
}

// The library lets nothing pass but its own errors.
template <class Answer>
auto IntentsService::answerOnDevice(Answer answer) {
    try {
        faults_ = {};
        auto reply = answer(deviceNow());
        faults_.tell(kIntentsServiceProgram);
        if (!faults_.empty()) {
            device_.reset();  // what is damaged is looked at, and told, again by the next call
        }
        return reply;
    } catch (const sdbus::Error&) {
        throw;
    } catch (const std::exception& error) {
        throw sdbus::Error(kFailed, busText(error.what()));
    }
}

std::map<std::string, sdbus::Variant> IntentsService::Handle(const std::string& intentClass) {
    const IntentRoute& route = routeOfClass(intentClass);
    return answerOnDevice([&route](const Device& device) {
        IntentHandler principal(device);
        const IntentReply reply = route.ask(principal);
        std::map<std::string, sdbus::Variant> fields = {{"code", static_cast<std::int64_t>(reply.code)}};
        if (reply.response) {
            fields.emplace("response", busText(*reply.response));
        }
        if (reply.dictionary) {
            fields.emplace("dictionary", busText(*reply.dictionary));
        }
        return fields;
    });
}

std::string IntentsService::Recognize(const std::string& phrase) {
    const Recognition recognition =
        answerOnDevice([&phrase](const Device& device) { return recognizePhrase(device, phrase); });
    if (recognition.className.empty()) {
        throw unclearPhrase(phrase, recognition.nearest);
    }
    return recognition.className;
}

std::map<std::string, sdbus::Variant> IntentsService::Describe(const std::string& intentClass) {
    const IntentRoute& route = routeOfClass(intentClass);
    return answerOnDevice([&route](const Device& device) {
        std::map<std::string, sdbus::Variant> fields;
        if (const auto definition = intentDefinition(device, route.className)) {
            fields = {{"title", busText(definition->title)},        {"description", busText(definition->description)},
                      {"category", busText(definition->category)},  {"phrases", busTexts(definition->phrases)},
                      {"success", busOutcome(definition->success)}, {"failure", busOutcome(definition->failure)},
                      {"parameters", definition->parameters}};
        }
        return fields;
    });
}

std::vector<IntentsService::DefinedIntent> IntentsService::Intents() {
    return answerOnDevice([](const Device& device) {
        std::vector<DefinedIntent> intents;
        for (const IntentDefinition& definition : intentDefinitions(device)) {
            intents.emplace_back(definition.className, busText(definition.title), busTexts(definition.phrases));
        }
        return intents;
    });
}

}  // namespace lunabrook
