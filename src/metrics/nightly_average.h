// The design that blood oxygen and respiration share: a night's average, minimum and maximum, the same over seven
// nights, and a marked rise or fall between the two averages.
//
// The metrics differ by a NightlyAverage. Its name makes the keys: "SpO2" gives "averageSpO2", "minSpO27",
// "averageSpO2RangeLabel" and the localised "MinSpO2".

#pragma once

#include <string_view>

namespace lunabrook {

struct NightlyAverage {
    std::string_view record;  // of "bankDict"
    std::string_view name;
    std::string_view infoKey;  // of the spoken sentence
    // English fragments, looked up in the bundle.
    std::string_view title;
    std::string_view averagePhrase;
    std::string_view rangePhrase;
    std::string_view unit;
    // Formats.
    std::string_view average;  // of the average and the localised unit
    std::string_view bound;    // of the minimum or the maximum
    std::string_view range;    // of both
    std::string_view average7;
    std::string_view range7;
    std::string_view rise;
    std::string_view fall;         // of the size of the fall
    std::string_view widgetLabel;  // a key of its own and a format; empty where displays need none
    std::string_view widget;
};

}  // namespace lunabrook
