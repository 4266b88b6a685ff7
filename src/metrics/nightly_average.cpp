#include "metrics/nightly_average.h"

#include <array>
#include <string>

#include "metrics/group_metrics.h"
#include "metrics/result_keys.h"
#include "metrics/store_keys.h"
#include "platform/text/string_format.h"

namespace lunabrook {

namespace {

constexpr double kMarkedChange = 0.1;
constexpr std::string_view kNoValue = "--";

enum class Change { none = 0, rise = 1, fall = 2 };

struct Numbers {
    float average = 0, minimum = 0, maximum = 0;
};

std::string keyed(std::string_view before, const NightlyAverage& metric, std::string_view after = "") {
    return nightlyKey(before, metric.name, after);
}

Numbers numbersOf(const Dictionary& record, const NightlyAverage& metric, std::string_view suffix) {
    return {.average = floatForKey(record, keyed("average", metric, suffix), 0.0F),
            .minimum = floatForKey(record, keyed("min", metric, suffix), 0.0F),
            .maximum = floatForKey(record, keyed("max", metric, suffix), 0.0F)};
}

void setNumbers(Dictionary& result, const Numbers& numbers, const NightlyAverage& metric, std::string_view suffix) {
    result.emplace(keyed("average", metric, suffix), numbers.average);
    result.emplace(keyed("min", metric, suffix), numbers.minimum);
    result.emplace(keyed("max", metric, suffix), numbers.maximum);
}

// Display texts in the user's locale.
struct Labels {
    std::string average{kNoValue}, minimum{kNoValue}, maximum{kNoValue}, average7{kNoValue}, range7{kNoValue};
    std::string widget{kNoValue};
    std::optional<std::string> range;  // alone stays unset without an average
    std::string difference;
    Change change = Change::none;
};

void labelDifference(Labels& labels, const Device& device, float average, float average7,
                     const NightlyAverage& metric) {
    // Single precision against a double bound is meant: 95.1 over 95.0 is no marked rise, 14.6 over 14.5 is one.
    const double difference = average - average7;
    if (difference >= kMarkedChange) {
        labels.difference = localizedStringWithFormat(device.locale(), metric.rise, {difference});
        labels.change = Change::rise;
    } else if (difference <= -kMarkedChange) {
        labels.difference = localizedStringWithFormat(device.locale(), metric.fall, {-difference});
        labels.change = Change::fall;
    }
}

Labels labelsOf(const Device& device, const Numbers& night, const Numbers& week, const NightlyAverage& metric) {
    Labels labels;
    if (!(night.average > 0)) {
        return labels;
    }
    const Locale& locale = device.locale();
    const std::string unit = metric.unit.empty() ? "" : device.localizedString(metric.unit);
    labels.average = localizedStringWithFormat(locale, metric.average, {night.average, unit});
    labels.widget = localizedStringWithFormat(locale, metric.widget, {night.average});
    labels.range = localizedStringWithFormat(locale, metric.range, {night.minimum, night.maximum});
    labels.minimum = localizedStringWithFormat(locale, metric.bound, {night.minimum});
    labels.maximum = localizedStringWithFormat(locale, metric.bound, {night.maximum});
    labels.average7 = localizedStringWithFormat(locale, metric.average7, {week.average});
    labels.range7 = localizedStringWithFormat(locale, metric.range7, {week.minimum, week.maximum});
    if (week.average > 0) {
        labelDifference(labels, device, night.average, week.average, metric);
    }
    return labels;
}

std::string summary(const Device& device, const Numbers& night, const Numbers& week, const NightlyAverage& metric) {
    const std::string average = device.localizedString(metric.name);
    const std::string minimum = device.localizedString(keyed("Min", metric));
    const std::string maximum = device.localizedString(keyed("Max", metric));
    // The odd blanks are meant, and so are minimum and maximum without decimals for either metric.
    return localizedStringWithFormat(
        device.locale(), R"({"%@":"%.1f", "%@":"%.0f", "%@": "%.0f", "%@":"%.1f", "%@":"%.0f" , "%@":"%.0f"})",
        {average, night.average, minimum, night.minimum, maximum, night.maximum, average + "-7", week.average,
         minimum + "-7", week.minimum, maximum + "-7", week.maximum});
}

}  // namespace

std::optional<Dictionary> GroupMetrics::requestNightlyAverage(const NightlyAverage& metric) {
    const auto record = reportDayRecord(metric.record);
    if (!record) {
        return std::nullopt;
    }
    const Numbers night = numbersOf(*record, metric, "");
    const Numbers week = numbersOf(*record, metric, "7");
    const Labels labels = labelsOf(device_, night, week, metric);

    Dictionary result = dictionaryOf({{kTitle, device_.localizedString(metric.title)},
                                      {kDifLabel, labels.difference},
                                      {kDifColour, static_cast<int>(labels.change)}});
    result.emplace(metric.infoKey, stringWithFormat("%@ %@. %@ %@ %@ %@.",
                                                    {device_.localizedString(metric.averagePhrase), labels.average,
                                                     device_.localizedString(metric.rangePhrase), labels.minimum,
                                                     device_.localizedString("to"), labels.maximum}));
    result.emplace(keyed("average", metric, "Label"), labels.average);
    if (!metric.widget.empty()) {
        result.emplace(metric.widgetLabel, labels.widget);
    }
    setValue(result, keyed("average", metric, "RangeLabel"), labels.range);
    result.emplace(keyed("min", metric, "Label"), labels.minimum);
    result.emplace(keyed("max", metric, "Label"), labels.maximum);
    result.emplace(keyed("average", metric, "Label7"), labels.average7);
    result.emplace(keyed("average", metric, "RangeLabel7"), labels.range7);
    setNumbers(result, night, metric, "");
    setNumbers(result, week, metric, "7");
    result.emplace(kPasteItem, summary(device_, night, week, metric));
    return result;
}

}  // namespace lunabrook
