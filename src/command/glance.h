// What the morning at a glance says: one card for each metric, in the user's language. Made from the result
// dictionaries alone; a page for a terminal, a picture and JSON each draw it in their own way.
//
//   glance.bloodOxygen.title -> "Sleep SpO2"      glance.bloodOxygen.content->average -> "96.2%"

#pragma once

#include <array>
#include <optional>
#include <string>

#include "platform/device/device.h"

namespace lunabrook {

enum class Tint { none = 0, unfavourable = 1, favourable = 2 };
enum class Change { none = 0, rise = 1, fall = 2 };

struct Glance {
    template <class Content>
    struct Card {
        std::string title;
        std::string sentence;            // as it is spoken
        std::optional<Content> content;  // nil without data
    };

    struct Ring {
        std::string name;
        float fill = 0;       // a fraction; 1 is closed, and more is possible
        std::string percent;  // "98%"
        std::string value;    // "7h 35m"
    };
    struct Rings {
        float rating = 0;  // a fraction
        std::string percent;
        std::array<Ring, 4> rings;  // sleep, quality or REM, deep, heart rate
    };

    struct Signal {
        std::string name;
        std::string value;       // "58 ms"; "--" when it could not be compared
        std::string difference;  // "6 above baseline", or empty
        Tint tint = Tint::none;
    };
    struct Recovery {
        float stars = 0;        // 0 to 6
        std::string starsText;  // "3.98"
        std::string grade;      // "Good"
        std::array<Signal, 2> signals;
    };

    struct Night {
        std::string average;
        std::string range;                       // empty without an average
        std::string averageOfWeek, rangeOfWeek;  // of the last seven nights
        std::string difference;                  // "0.4%↗", or empty
        Change change = Change::none;
    };

    struct Temperature {
        std::string today;
        std::string baselineName, baseline;
        std::string difference;  // "0.14°↗"
    };

    struct Moment {
        std::string name;          // "Tonight's Bedtime"
        std::string time;          // "9:51 PM"; empty without data
        std::string remark;        // "Time until bed", "17m earlier"
        std::string remarkedTime;  // "14h 32m", or empty
    };
    struct Bank {
        float fraction = 0;  // 1 is on target
        std::string percent;
        std::string balance;            // "Debt 1.9%"; empty when it is neither debt nor credit
        std::array<Moment, 3> moments;  // tonight's bedtime, waking, the average bedtime and how it moved
    };

    std::string language;  // of the texts: "de"; empty when no translation is in use
    bool isRightToLeft = false;

    std::string day;  // "Wednesday, Jun 10, 2026"; empty when no calendar reaches it
    std::string noData;
    std::string averageName, rangeName, weekName;  // over the columns of the nights

    Card<Rings> rings;
    Card<Recovery> readiness, sleepFuel;
    Card<Night> bloodOxygen, respiration;
    Card<Temperature> temperature;
    Card<Bank> bank;
};

Glance glanceAt(const Device& device);

}  // namespace lunabrook
