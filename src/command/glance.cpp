#include "command/glance.h"

#include "command/morning.h"
#include "metrics/group_metrics.h"
#include "metrics/percent.h"
#include "metrics/result_keys.h"
#include "platform/text/string_format.h"

namespace lunabrook {

namespace {

std::string label(const Dictionary& result, std::string_view key) {
    const std::string* text = stringForKey(result, key);
    return text != nullptr ? *text : "";
}

// A page with a heading over the week needs no sign at each number.
std::string withoutWeekSign(const std::string& text) {
    constexpr std::string_view kSign = "⑦ ";
    return text.starts_with(kSign) ? text.substr(kSign.size()) : text;
}

class Words {
public:
    explicit Words(const Device& device) : device_(device) {}

    std::string localized(std::string_view fragment) const { return device_.localizedString(fragment); }
    std::string number(const char* format, double value) const {
        return localizedStringWithFormat(device_.locale(), format, {value});
    }
    std::string percent(float fraction) const { return number("%.0f%%", percentOf(fraction)); }

    template <class Content>
    Glance::Card<Content> card(std::string_view title, const std::optional<Dictionary>& result,
                               std::string_view sentenceKey,
                               Content (Words::*content)(const Dictionary& result) const) const {
        Glance::Card<Content> card{localized(title), localized("No Data"), std::nullopt};
        if (result) {
            card.sentence = label(*result, sentenceKey);
            card.content = (this->*content)(*result);
        }
        return card;
    }

    Glance::Rings rings(const Dictionary& result) const {
        const auto ring = [&](std::string_view name, std::string_view fillKey, const std::string& value) {
            const float fill = floatForKey(result, fillKey, 0);
            return Glance::Ring{localized(name), fill, percent(fill), value};
        };
        const float rating = floatForKey(result, kSleepRating, 0);
        return {.rating = rating,
                .percent = percent(rating),
                .rings = {ring("Sleep", kRingSleepPercent, label(result, kRingSleepLabel)),
                          ring(result.contains(kShowStages) ? "REM" : "Quality", kRingQualityPercent,
                               label(result, kRingQualityLabel)),
                          ring("Deep", kRingDeepPercent, label(result, kRingDeepLabel)),
                          ring("Sleeping heart rate", kRingBpmPercent,
                               label(result, kRingBpmLabel) + " " + localized("bpm"))}};
    }

    Glance::Recovery readiness(const Dictionary& result) const { return recovery(result, "Waking heart rate"); }
    Glance::Recovery sleepFuel(const Dictionary& result) const { return recovery(result, "Sleeping heart rate"); }

    Glance::Night bloodOxygen(const Dictionary& result) const { return night(result, kSpO2Name); }
    Glance::Night respiration(const Dictionary& result) const { return night(result, kRespRateName); }

    Glance::Temperature temperature(const Dictionary& result) const {
        return {.today = label(result, kWristTempTodayLabel),
                .baselineName = localized("Baseline"),
                .baseline = label(result, kWristTempAverage28Label),
                .difference = label(result, kWristTempDifLabel)};
    }

    Glance::Bank bank(const Dictionary& result) const {
        const auto moment = [&](std::string_view name, std::string_view time, std::string_view remark,
                                std::string_view remarkedTime) {
            const bool isPlanned = result.contains(kLatestBedTime);
            return Glance::Moment{localized(name), label(result, time), isPlanned ? localized(remark) : "",
                                  label(result, remarkedTime)};
        };
        const float fraction = floatForKey(result, kBankPercent, 0);
        return {.fraction = fraction,
                .percent = percent(fraction),
                .balance = balance(fraction),
                .moments = {moment("Tonight's Bedtime", kLatestBedTime, "Time until bed", kTimeUntilBedLabel),
                            moment("Wake time", kWakeTimeLabel, "Time until waking", kTimeUntilWakeLabel),
                            {}}};
    }

    Glance::Moment habit(const std::optional<Dictionary>& result) const {
        const auto text = [&result](std::string_view key) { return result ? label(*result, key) : ""; };
        return {localized("Average bedtime"), text(kAvgBedtimeDateString), text(kTrendString), ""};
    }

private:
    Glance::Recovery recovery(const Dictionary& result, std::string_view rateName) const {
        const auto tint = [&](std::string_view key) { return static_cast<Tint>(integerForKey(result, key, 0)); };
        const float stars = floatForKey(result, kStarsValue, 0);
        return {.stars = stars,
                .starsText = number("%.2f", stars),
                .grade = label(result, kRating),
                .signals = {{{localized("HRV"), label(result, kHrvLabel), label(result, kHrvDifLabel), tint(kHrvTint)},
                             {localized(rateName), label(result, kWakingLabel), label(result, kWakingDifLabel),
                              tint(kWakingTint)}}}};
    }

    Glance::Night night(const Dictionary& result, std::string_view metric) const {
        const auto of = [&](std::string_view after) { return label(result, nightlyKey("average", metric, after)); };
        return {.average = of("Label"),
                .range = of("RangeLabel"),
                .averageOfWeek = withoutWeekSign(of("Label7")),
                .rangeOfWeek = withoutWeekSign(of("RangeLabel7")),
                .difference = label(result, kDifLabel),
                .change = static_cast<Change>(integerForKey(result, kDifColour, 0))};
    }

    std::string balance(float fraction) const {
        if (fraction < 1) {
            return localized("Debt") + " " + number("%.1f%%", percentOf(1 - fraction));
        }
        return fraction >= 1 ? localized("Credit") + " " + number("%.1f%%", percentOf(fraction - 1)) : "";
    }

    const Device& device_;
};

bool readsFromTheRight(const std::string& language) {
    const std::optional<Locale> locale = Locale::named(language);
    return locale && locale->isRightToLeft();
}

}  // namespace

Glance glanceAt(const Device& device) {
    const Morning morning = morningOf(device);
    const Words words(device);
    const std::string language = device.bundle().language();
    Glance glance{
        .language = language,
        .isRightToLeft = readsFromTheRight(language),
        .day = morning.reportDay ? FormatTools(device).dayMonthDateYear(morning.reportDay).value_or("") : "",
        .noData = words.localized("No Data"),
        .averageName = words.localized("Average"),
        .rangeName = words.localized("Range"),
        .weekName = words.localized("Seven nights"),
        .rings = words.card("Sleep Rating", morning.quality, kSiriLabel, &Words::rings),
        .readiness = words.card("Today's Readiness", morning.readiness, kTodaysReadinessStars, &Words::readiness),
        .sleepFuel = words.card("Sleep Fuel Rating", morning.octane, kTodaysReadinessStars, &Words::sleepFuel),
        .bloodOxygen = words.card("Sleep SpO2", morning.spO2, kTodaysSpO2Info, &Words::bloodOxygen),
        .respiration = words.card("Respiration Rate", morning.respRate, kTodaysRespRateInfo, &Words::respiration),
        .temperature = words.card("Temperature", morning.wristTemp, kWristTempTodayInfo, &Words::temperature),
        .bank = words.card("Sleep Bank", morning.sleepBank, kLatestBedLabel, &Words::bank)};
    if (glance.bank.content) {
        glance.bank.content->moments[2] = words.habit(morning.consistency);
    }
    return glance;
}

}  // namespace lunabrook
