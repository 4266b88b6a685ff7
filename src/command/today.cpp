#include "command/today.h"

#include <cstdlib>
#include <iostream>
#include <vector>

#include "command/morning.h"
#include "command/page.h"
#include "command/verbs.h"
#include "metrics/percent.h"
#include "metrics/result_keys.h"
#include "platform/device/terminal.h"
#include "platform/text/display_width.h"
#include "platform/text/string_format.h"

namespace lunabrook {

namespace {

constexpr int kNameColumns = 22;
constexpr int kBarColumns = 20;

std::string label(const Dictionary& result, std::string_view key) {
    const std::string* text = stringForKey(result, key);
    return text != nullptr ? *text : "";
}

std::string repeated(const char* sign, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) {
        text += sign;
    }
    return text;
}

// Of `most` signs as many as the fraction fills; a fraction that is no number fills none.
int filledSigns(double fraction, int most) {
    const double signs = fraction * most;
    return signs >= most ? most : signs > 0 ? static_cast<int>(signs) : 0;
}

std::string bar(double fraction) {
    const int full = filledSigns(fraction, kBarColumns);
    return repeated("█", full) + repeated("░", kBarColumns - full);
}

std::string stars(double value) {
    constexpr int kMost = 5;
    const int full = filledSigns(value / kMost, kMost);
    return repeated("★", full) + repeated("⭒", kMost - full);
}

class Glance {
public:
    Glance(const Device& device, bool hasColours) : device_(device), page_(hasColours) {}

    std::string textOf(const Morning& morning) {
        addRings(morning.quality);
        page_.addBlank();
        addRecovery("Today's Readiness", morning.readiness);
        page_.addBlank();
        addRecovery("Sleep Fuel Rating", morning.octane);
        page_.addBlank();
        addNight("Sleep SpO2", kSpO2Name, morning.spO2);
        addNight("Respiration Rate", kRespRateName, morning.respRate);
        addTemperature(morning.wristTemp);
        page_.addBlank();
        addBank(morning.sleepBank);
        return page_.text();
    }

private:
    std::string localized(std::string_view fragment) const { return device_.localizedString(fragment); }

    // Longer names are cut, so that what follows stays in its column.
    Cell name(std::string_view fragment) const {
        return {textFittedTo("  " + localized(fragment), kNameColumns - 1), kNameColumns};
    }
    Cell heading(const std::string& text) const {
        return {textFittedTo(text, kNameColumns - 1), kNameColumns, Ink::heading};
    }

    Cell percent(float fraction) const {
        return {localizedStringWithFormat(device_.locale(), "%4.0f%%", {percentOf(fraction)}), 7};
    }

    // False, and a quiet line, when the metric has no data.
    bool addHeadingWithoutData(std::string_view fragment, const std::optional<Dictionary>& result) {
        if (!result) {
            page_.add({heading(localized(fragment)), {localized("No Data"), 0, Ink::quiet}});
        }
        return !result;
    }

    void addRings(const std::optional<Dictionary>& rings) {
        if (addHeadingWithoutData("Sleep Rating", rings)) {
            return;
        }
        const float rating = floatForKey(*rings, kSleepRating, 0);
        page_.add({heading(localized("Sleep Rating")), {bar(rating), kBarColumns + 1}, percent(rating)});
        const struct {
            std::string_view name, percent, label;
        } rows[] = {
            {"Sleep", kRingSleepPercent, kRingSleepLabel},
            {rings->contains(kShowStages) ? "REM" : "Quality", kRingQualityPercent, kRingQualityLabel},
            {"Deep", kRingDeepPercent, kRingDeepLabel},
            {"bpm", kRingBpmPercent, kRingBpmLabel},
        };
        for (const auto& row : rows) {
            const float fill = floatForKey(*rings, row.percent, 0);
            const Ink ink = fill >= 1 ? Ink::good : Ink::plain;
            page_.add({name(row.name), {bar(fill), kBarColumns + 1, ink}, percent(fill), {label(*rings, row.label)}});
        }
    }

    static Ink inkOfTint(const Dictionary& result, std::string_view key) {
        constexpr std::int64_t kUnfavourable = 1;
        constexpr std::int64_t kFavourable = 2;
        const std::int64_t tint = integerForKey(result, key, 0);
        return tint == kFavourable ? Ink::good : tint == kUnfavourable ? Ink::bad : Ink::plain;
    }

    void addRecovery(std::string_view title, const std::optional<Dictionary>& result) {
        constexpr int kValueColumns = 11;
        if (addHeadingWithoutData(title, result)) {
            return;
        }
        const double value = floatForKey(*result, kStarsValue, 0);
        page_.add({heading(localized(title)),
                   {stars(value), 6},
                   {localizedStringWithFormat(device_.locale(), "%.2f", {value}), 5},
                   {label(*result, kRating)}});
        const struct {
            std::string_view name, label, difference, tint;
        } rows[] = {{"HRV", kHrvLabel, kHrvDifLabel, kHrvTint}, {"bpm", kWakingLabel, kWakingDifLabel, kWakingTint}};
        for (const auto& row : rows) {
            page_.add({name(row.name),
                       {label(*result, row.label), kValueColumns},
                       {label(*result, row.difference), 0, inkOfTint(*result, row.tint)}});
        }
    }

    static Ink inkOfChange(const Dictionary& result) {
        constexpr std::int64_t kRise = 1;
        constexpr std::int64_t kFall = 2;
        const std::int64_t change = integerForKey(result, kDifColour, 0);
        return change == kRise ? Ink::rise : change == kFall ? Ink::fall : Ink::plain;
    }

    void addNight(std::string_view title, std::string_view metric, const std::optional<Dictionary>& result) {
        if (addHeadingWithoutData(title, result)) {
            return;
        }
        page_.add({heading(label(*result, kTitle)),
                   {label(*result, nightlyKey("average", metric, "Label")), 11},
                   {label(*result, nightlyKey("average", metric, "RangeLabel")), 13},
                   {label(*result, nightlyKey("average", metric, "Label7")), 9},
                   {label(*result, nightlyKey("average", metric, "RangeLabel7")), 15},
                   {label(*result, kDifLabel), 0, inkOfChange(*result)}});
    }

    void addTemperature(const std::optional<Dictionary>& result) {
        if (addHeadingWithoutData("Temperature", result)) {
            return;
        }
        page_.add({heading(localized("Temperature")),
                   {label(*result, kWristTempTodayLabel), 11},
                   {localized("Baseline") + " " + label(*result, kWristTempAverage28Label), 37},
                   {label(*result, kWristTempDifLabel)}});
    }

    void addBank(const std::optional<Dictionary>& bank) {
        constexpr int kTimeColumns = 11;
        if (addHeadingWithoutData("Sleep Bank", bank)) {
            return;
        }
        const float fraction = floatForKey(*bank, kBankPercent, 0);
        page_.add({heading(localized("Sleep Bank")), {bar(fraction), kBarColumns + 1}, percent(fraction)});
        if (!bank->contains(kLatestBedTime)) {
            page_.add({name("Tonight's Bedtime"), {localized("No Data"), 0, Ink::quiet}});
            return;
        }
        page_.add({name("Tonight's Bedtime"),
                   {label(*bank, kLatestBedTime), kTimeColumns},
                   {localized("Time until bed") + " " + label(*bank, kTimeUntilBedLabel)}});
        page_.add({name("Wake time"),
                   {label(*bank, kWakeTimeLabel), kTimeColumns},
                   {label(*bank, kTimeUntilWakeLabel), 0, Ink::quiet}});
    }

    const Device& device_;
    Page page_;
};

}  // namespace

std::string todayText(const Device& device, bool hasColours) {
    return Glance(device, hasColours).textOf(morningOf(device));
}

ExitStatus showToday(const Device& device) {
    const char* noColour = std::getenv("NO_COLOR");  // any text that is not empty, as no-color.org says
    const bool hasColours = standardOutputIsTerminal() && (noColour == nullptr || *noColour == '\0');
    std::cout << todayText(device, hasColours);
    return ExitStatus::answered;
}

}  // namespace lunabrook
