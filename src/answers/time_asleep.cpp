// The time-asleep answer: how long the user slept, and whether the sleep bank is in debt or in credit.
//
//   "Today you slept 7 hours 30 minutes. You have a sleep debt of 12.5%."

#include <string>

#include "answers/handle_sleep_metrics.h"
#include "metrics/sleep_goal.h"
#include "metrics/store_keys.h"
#include "platform/text/string_format.h"
#include "platform/text/text_case.h"

namespace lunabrook {

namespace {

constexpr std::string_view kSleepSessionStart = "sleepSessionStart";
constexpr std::string_view kSleepSessionEnd = "sleepSessionEnd";

// Seconds.
struct Night {
    float asleep = 0;
    float balance = 0;
    float required = 0;

    // Neither holds when one of the two is not a number: then there is no phrase, and both percentages are 0.
    bool isInDebt() const { return balance < required; }
    bool isInCredit() const { return balance >= required; }
    float ratio() const { return (isInDebt() ? required - balance : balance - required) / required; }
    float percent() const { return ratio() * 100.0F; }
    float creditPercent() const { return isInCredit() ? percent() : 0.0F; }
    float debtPercent() const { return isInDebt() ? percent() : 0.0F; }
};

std::string bankWord(const Device& device, bool isInDebt) {
    const std::string word = lowercaseString(device.localizedString(isInDebt ? "Debt" : "Credit"));
    return !isInDebt && word == "guthaben" ? "Guthaben" : word;  // a German noun keeps its capital
}

std::string bankPhrase(const Device& device, const Night& night, const std::string& subject, const char* link) {
    if (!night.isInDebt() && !night.isInCredit()) {
        return "";
    }
    const std::string word = bankWord(device, night.isInDebt());
    if (night.ratio() < 1.0F) {
        return localizedStringWithFormat(device.locale(), "%@ %@ %@ %.1f%%", {subject, word, link, night.percent()});
    }
    return stringWithFormat("%@ %@ %@ %.0f%%", {subject, word, link, night.percent()});
}

std::string sentence(const Device& device, const Night& night, std::optional<std::string> duration) {
    std::string subject = device.localizedString("Sleep Bank");
    const char* link = "";
    if (subject == "Sleep Bank") {  // untranslated: the English phrasing
        subject = "You have a sleep";
        link = "of";
        if (duration) {
            duration = stringByReplacing(*duration, ",", "");
        }
    }
    const std::string text = stringWithFormat(
        "%@ %@. %@.", {device.localizedString(kTodayYouSlept), duration, bankPhrase(device, night, subject, link)});
    return stringByReplacing(text, "  ", " ");
}

std::string summary(const Device& device, const Night& night, const std::optional<std::string>& start,
                    const std::optional<std::string>& until) {
    // The blank after the third colon is meant.
    return localizedStringWithFormat(
        device.locale(),
        R"({"%@%%":"%.0f", "%@%%":"%.1f", "%@%%": "%.1f", "%@":"%.02f", "%@":"%.02f", "%@":"%@", "%@":"%@"})",
        {device.localizedString("Recharge"), night.asleep / night.required * 100.0F, device.localizedString("Credit"),
         night.creditPercent(), device.localizedString("Debt"), night.debtPercent(), device.localizedString("Sleep"),
         night.asleep / 3600.0, device.localizedString("Balance"), night.balance / 3600.0,
         device.localizedString("Start"), start, device.localizedString("Until"), until});
}

}  // namespace

std::optional<Dictionary> HandleSleepMetrics::getSleepBankInfo() {
    openStoreAndTools();
    const auto watch = groupPrefs_->dictionaryForKey(kWatchTrackDict);
    if (!watch) {
        return noDataAnswer();
    }
    const Night night = {
        .asleep = floatForKey(*watch, kRawSleepTime, 0.0F),
        .balance = floatForKey(*watch, kRawSleepBankTime, 0.0F),
        .required = sleepGoalSeconds(getLunabrookConfigValueForKey(kRequiredHours)),
    };
    auto start = groupPrefs_->dateForKey(kSleepSessionStart);
    auto until = groupPrefs_->dateForKey(kSleepSessionEnd);
    if (!start || !until) {
        start = until = device_.now();
    }
    Dictionary answer;
    answer.emplace(kRawSleepTime, night.asleep);
    answer.emplace(kPasteItem,
                   summary(device_, night, formatTools_->shorthhmmDDMMYY(start), formatTools_->shorthhmmDDMMYY(until)));
    answer.emplace(kResponse, sentence(device_, night, formatTools_->formattedLongTimeInterval(night.asleep)));
    return answer;
}

}  // namespace lunabrook
