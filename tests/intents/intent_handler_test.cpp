#include "intents/intent_handler.h"

#include <gtest/gtest.h>

#include "intents/intent_dispatch.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

using test::TestDevice;

// Answers every operation with the same dictionary and notes which one was asked.
struct Script {
    std::optional<Dictionary> answer;
    std::vector<std::string> asked = {};
    int made = 0;

    std::optional<Dictionary> say(const char* operation) {
        asked.emplace_back(operation);
        return answer;
    }
};

class ScriptedSleepMetrics : public HandleSleepMetrics {
public:
    ScriptedSleepMetrics(const Device& device, Script& script) : HandleSleepMetrics(device), script_(script) {}

    std::optional<Dictionary> getSleepRingsInfo() override { return script_.say("getSleepRingsInfo"); }
    std::optional<Dictionary> getLatestBedtimeInfo() override { return script_.say("getLatestBedtimeInfo"); }
    std::optional<Dictionary> getReadinessInfo() override { return script_.say("getReadinessInfo"); }
    std::optional<Dictionary> getOctaneInfo() override { return script_.say("getOctaneInfo"); }
    std::optional<Dictionary> getSpO2Info() override { return script_.say("getSpO2Info"); }
    std::optional<Dictionary> getWristTempInfo() override { return script_.say("getWristTempInfo"); }
    std::optional<Dictionary> getRespirationInfo() override { return script_.say("getRespirationInfo"); }
    std::optional<Dictionary> getSleepBankInfo() override { return script_.say("getSleepBankInfo"); }

private:
    Script& script_;
};

class ScriptedLightsOff : public HandleLightsOff {
public:
    ScriptedLightsOff(const Device& device, Script& script) : HandleLightsOff(device), script_(script) {}

    std::optional<Dictionary> turnLightsOff() override { return script_.say("turnLightsOff"); }

private:
    Script& script_;
};

class ScriptedHandler : public IntentHandler {
public:
    ScriptedHandler(const Device& device, Script& script) : IntentHandler(device), device_(device), script_(script) {}

protected:
    std::unique_ptr<HandleLightsOff> makeHandleLightsOff() const override {
        ++script_.made;
        return std::make_unique<ScriptedLightsOff>(device_, script_);
    }
    std::unique_ptr<HandleSleepMetrics> makeHandleSleepMetrics() const override {
        ++script_.made;
        return std::make_unique<ScriptedSleepMetrics>(device_, script_);
    }

private:
    const Device& device_;
    Script& script_;
};

TEST(IntentHandler, RoutesEachIntentToItsOwnAnswerAndKeepsTwoMembers) {
    const std::vector<std::string> operations = {"turnLightsOff",        "getSleepBankInfo",  "getReadinessInfo",
                                                 "getOctaneInfo",        "getSpO2Info",       "getRespirationInfo",
                                                 "getLatestBedtimeInfo", "getSleepRingsInfo", "getWristTempInfo"};
    const struct {
        const char* name;
        std::optional<Dictionary> answer;
        int code;
        std::optional<std::string> response, dictionary;  // lights off never has the second
    } rows[] = {
        {"said", Dictionary{{"response", "said"}, {"pasteItem", "{}"}}, 4, "said", "{}"},
        {"missing_answer", std::nullopt, 5, std::nullopt, std::nullopt},
        {"answer_without_sentence", Dictionary{}, 4, std::nullopt, std::nullopt},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const TestDevice device;
        Script script{row.answer};
        ScriptedHandler handler(device, script);
        for (const IntentRoute& route : intentRoutes()) {
            const IntentReply reply = route.ask(handler);
            EXPECT_EQ(static_cast<int>(reply.code), row.code);
            EXPECT_EQ(reply.response, row.response);
            EXPECT_EQ(reply.dictionary, route.shortName == "lights-off" ? std::nullopt : row.dictionary);
        }
        EXPECT_EQ(script.asked, operations);
        EXPECT_EQ(script.made, 2);
    }
}

TEST(IntentResponse, CodeChangesAlone) {
    const auto activity = std::make_shared<UserActivity>();
    auto response = ReadinessIntentResponse::initWithCode(IntentResponseCode::success, activity);
    response.response = "said";
    response.setCode(IntentResponseCode::failure);
    EXPECT_EQ(response.response, "said");
    EXPECT_EQ(response.userActivity(), activity);
}

TEST(IntentDispatch, KnowsNamesAndTitlesAndAHandlerWithoutTheProtocol) {
    class Deaf : public INExtension {
        INExtension& handlerForIntent(const INIntent&) override { return *this; }
    } deaf;
    for (const char* name : {"SleepSpO2Intent", "sleepspo2intent", "Blood Oxygen", "BLOOD_OXYGEN"}) {
        EXPECT_EQ(intentRouteNamed(name), intentRouteNamed("blood-oxygen")) << name;
    }
    EXPECT_EQ(intentRouteNamed("bloodoxygen"), nullptr);
    EXPECT_EQ(intentRouteNamed("readiness")->ask(deaf).code, IntentResponseCode::failure);
}

}  // namespace
}  // namespace lunabrook
