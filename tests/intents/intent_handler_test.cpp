#include "intents/intent_handler.h"

#include <gtest/gtest.h>

#include "intents/intent_dispatch.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

using test::TestDevice;

// Answers every operation with the same dictionary and notes which one was asked.
class FixedSleepMetrics : public HandleSleepMetrics {
public:
    FixedSleepMetrics(const Device& device, std::optional<Dictionary> answer, std::vector<std::string>& asked)
        : HandleSleepMetrics(device), answer_(std::move(answer)), asked_(asked) {}

    std::optional<Dictionary> getSleepRingsInfo() override { return answer("getSleepRingsInfo"); }
    std::optional<Dictionary> getLatestBedtimeInfo() override { return answer("getLatestBedtimeInfo"); }
    std::optional<Dictionary> getReadinessInfo() override { return answer("getReadinessInfo"); }
    std::optional<Dictionary> getOctaneInfo() override { return answer("getOctaneInfo"); }
    std::optional<Dictionary> getSpO2Info() override { return answer("getSpO2Info"); }
    std::optional<Dictionary> getWristTempInfo() override { return answer("getWristTempInfo"); }
    std::optional<Dictionary> getRespirationInfo() override { return answer("getRespirationInfo"); }
    std::optional<Dictionary> getSleepBankInfo() override { return answer("getSleepBankInfo"); }

private:
    std::optional<Dictionary> answer(const char* operation) {
        asked_.emplace_back(operation);
        return answer_;
    }

    std::optional<Dictionary> answer_;
    std::vector<std::string>& asked_;
};

class FixedLightsOff : public HandleLightsOff {
public:
    FixedLightsOff(const Device& device, std::optional<Dictionary> answer, std::vector<std::string>& asked)
        : HandleLightsOff(device), answer_(std::move(answer)), asked_(asked) {}

    std::optional<Dictionary> turnLightsOff() override {
        asked_.emplace_back("turnLightsOff");
        return answer_;
    }

private:
    std::optional<Dictionary> answer_;
    std::vector<std::string>& asked_;
};

class FixedHandler : public IntentHandler {
public:
    FixedHandler(const Device& device, std::optional<Dictionary> answer)
        : IntentHandler(device), device_(device), answer_(std::move(answer)) {}

    mutable std::vector<std::string> asked;
    mutable int made = 0;

protected:
    std::unique_ptr<HandleLightsOff> makeHandleLightsOff() const override {
        ++made;
        return std::make_unique<FixedLightsOff>(device_, answer_, asked);
    }
    std::unique_ptr<HandleSleepMetrics> makeHandleSleepMetrics() const override {
        ++made;
        return std::make_unique<FixedSleepMetrics>(device_, answer_, asked);
    }

private:
    const Device& device_;
    std::optional<Dictionary> answer_;
};

std::vector<IntentReply> askAll(INExtension& extension) {
    std::vector<IntentReply> replies;
    for (const IntentRoute& route : intentRoutes()) {
        replies.push_back(route.ask(extension));
    }
    return replies;
}

TEST(IntentHandler, RoutesEachIntentToItsOwnAnswerAndKeepsTwoMembers) {
    const TestDevice device;
    FixedHandler handler(device, Dictionary{{"response", "said"}, {"pasteItem", "{}"}});
    const auto replies = askAll(handler);
    EXPECT_EQ(handler.asked,
              (std::vector<std::string>{"turnLightsOff", "getSleepBankInfo", "getReadinessInfo", "getOctaneInfo",
                                        "getSpO2Info", "getRespirationInfo", "getLatestBedtimeInfo",
                                        "getSleepRingsInfo", "getWristTempInfo"}));
    EXPECT_EQ(handler.made, 2);
    ASSERT_EQ(replies.size(), 9U);
    for (std::size_t i = 0; i < replies.size(); ++i) {
        EXPECT_EQ(replies[i].code, IntentResponseCode::success);
        EXPECT_EQ(replies[i].response, "said");
        EXPECT_EQ(replies[i].dictionary, i == 0 ? std::nullopt : std::optional<std::string>("{}")) << i;
    }
}

TEST(IntentHandler, MissingAnswerIsAFailureForAllNine) {
    const TestDevice device;
    FixedHandler handler(device, std::nullopt);
    const auto replies = askAll(handler);
    ASSERT_EQ(replies.size(), 9U);
    for (const IntentReply& reply : replies) {
        EXPECT_EQ(static_cast<int>(reply.code), 5);
        EXPECT_FALSE(reply.response);
        EXPECT_FALSE(reply.dictionary);
    }
}

TEST(IntentHandler, AnswerWithoutSentenceIsASuccessWithoutOne) {
    const TestDevice device;
    FixedHandler handler(device, Dictionary{});
    for (const IntentReply& reply : askAll(handler)) {
        EXPECT_EQ(static_cast<int>(reply.code), 4);
        EXPECT_FALSE(reply.response);
        EXPECT_FALSE(reply.dictionary);
    }
}

TEST(IntentHandler, HandlesAnIntentOfAnyClassItself) {
    class Stranger : public INIntent {};
    const TestDevice device;
    IntentHandler handler(device);
    EXPECT_EQ(&handler.handlerForIntent(Stranger()), &handler);
}

TEST(IntentResponse, CodeChangesAlone) {
    auto response = ReadinessIntentResponse::successIntentResponseWithResponse("said");
    response.dictionary = "{}";
    response.setCode(IntentResponseCode::failure);
    EXPECT_EQ(response.response, "said");
    EXPECT_EQ(response.dictionary, "{}");
    EXPECT_EQ(response.userActivity(), nullptr);

    const auto activity = std::make_shared<UserActivity>();
    EXPECT_EQ(WristTempIntentResponse::initWithCode(IntentResponseCode::failure, activity).userActivity(), activity);
}

TEST(IntentDispatch, KnowsClassAndShortNamesAndAHandlerWithoutTheProtocol) {
    class Deaf : public INExtension {
        INExtension& handlerForIntent(const INIntent&) override { return *this; }
    } deaf;
    EXPECT_EQ(intentRouteNamed("SleepSpO2Intent"), intentRouteNamed("blood-oxygen"));
    EXPECT_EQ(intentRouteNamed("readinessintent"), nullptr);
    EXPECT_EQ(intentRouteNamed("readiness")->ask(deaf).code, IntentResponseCode::failure);
}

}  // namespace
}  // namespace lunabrook
