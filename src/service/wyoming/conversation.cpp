#include "service/wyoming/conversation.h"

#include <stdexcept>
#include <utility>

#include "host/fault_list.h"
#include "intents/intent_dispatch.h"
#include "intents/intent_handler.h"
#include "voice/intent_definitions.h"
#include "voice/phrase_recognizer.h"

namespace lunabrook::wyoming {

namespace {

using nlohmann::json;

constexpr const char* kErrorType = "error";
constexpr const char* kSorry = "Sorry, I have no answer to that.";
constexpr std::size_t kLongestTagBytes = 64;

std::string textAt(const json& data, const char* name) {
    const auto text = data.find(name);
    return text != data.end() && text->is_string() ? text->get<std::string>() : std::string();
}

Device::Settings settingsNow(const DeviceOptions& options) {
    auto found = findDevice(options);
    if (const auto* wrong = std::get_if<WrongCall>(&found)) {
        throw std::runtime_error(wrong->what);  // it held when the service was started
    }
    return std::get<FoundDevice>(std::move(found)).settings;
}

// A language that the bundle lacks, or none, leaves the device as it is.
void speak(const std::string& language, Device::Settings& settings) {
    const bool isKnown =
        language.size() <= kLongestTagBytes && !Bundle(settings.bundle, {language}, settings.faults).language().empty();
    if (isKnown) {
        settings.locale = localeForLanguage(language, settings.locale).value_or(settings.locale);
        settings.preferredLanguages = {language};
    }
}

std::string failureText(const Device& device, const IntentRoute& route) {
    const auto definition = intentDefinition(device, route.className);
    return definition ? definition->failure.text : device.localizedString(kSorry);
}

struct Spoken {
    bool isHandled = false;
    std::string text;
};

Spoken spokenAnswer(const Device& device, const std::string& sentence) {
    const IntentRoute* route = intentRouteNamed(recognizePhrase(device, sentence).className);
    if (route == nullptr) {
        return {false, device.localizedString(kSorry)};
    }
    IntentHandler principal(device);
    const IntentReply reply = route->ask(principal);
    if (reply.code == IntentResponseCode::failure) {
        return {false, failureText(device, *route)};
    }
    return {true, reply.response.value_or("")};
}

json described(const char* name, const char* description) {
    return {{"name", name},
            {"attribution", {{"name", "Lunabrook developers"}, {"url", ""}}},
            {"installed", true},
            {"description", description},
            {"version", LUNABROOK_VERSION}};
}

}  // namespace

Event Conversation::info() const {
    const Device::Settings settings = settingsNow(options_);
    json model = described("sleep", "Nine questions about last night and tonight");
    model["languages"] = Bundle(settings.bundle, settings.preferredLanguages, settings.faults).languages();
    json program = described("lunabrook", "Answers from the sleep tracker's store");
    program["models"] = json::array({model});
    program["supports_handled_streaming"] = false;
    program["supports_home_control"] = false;
    Event info{.type = "info", .data = {{"handle", json::array({program})}}};
    for (const char* other : {"asr", "tts", "intent", "wake", "mic", "snd"}) {
        info.data[other] = json::array();
    }
    return info;
}

Event Conversation::answerToTranscript(const Event& transcript) const {
    const auto sentence = transcript.data.find("text");
    if (sentence == transcript.data.end() || !sentence->is_string()) {
        return errorEvent("no-text", "the transcript has no text");
    }
    FaultList faults;
    Device::Settings settings = settingsNow(options_);
    settings.faults = faults.listener();
    speak(textAt(transcript.data, "language"), settings);
    const Device device(std::move(settings));
    const Spoken spoken = spokenAnswer(device, sentence->get<std::string>());
    faults.tell(kProgram);
    Event reply{.type = spoken.isHandled ? "handled" : "not-handled", .data = {{"text", spoken.text}}};
    if (const auto context = transcript.data.find("context"); context != transcript.data.end()) {
        reply.data["context"] = *context;
    }
    return reply;
}

std::optional<Event> Conversation::answer(const Event& event) const {
    if (event.type == "describe") {
        return info();
    }
    if (event.type == "transcript") {
        return answerToTranscript(event);
    }
    if (event.type == "ping") {
        const auto text = event.data.find("text");
        return Event{.type = "pong", .data = {{"text", text != event.data.end() ? *text : json()}}};
    }
    return std::nullopt;
}

Event errorEvent(const std::string& code, const std::string& why) {
    return {.type = kErrorType, .data = {{"text", why}, {"code", code}}};
}

bool isError(const Event& event) { return event.type == kErrorType; }

}  // namespace lunabrook::wyoming
