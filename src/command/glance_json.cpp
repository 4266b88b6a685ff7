#include "command/glance_json.h"

#include "host/json_output.h"

namespace lunabrook {

namespace {

// A number that is none is null.
Json numberOf(float number) { return jsonFromValue(Value(static_cast<double>(number))); }

const char* nameOf(Tint tint) {
    return tint == Tint::favourable ? "favourable" : tint == Tint::unfavourable ? "unfavourable" : "none";
}
const char* nameOf(Change change) { return change == Change::rise ? "rise" : change == Change::fall ? "fall" : "none"; }

Json jsonOf(const Glance::Rings& rings) {
    Json parts = Json::array();
    for (const Glance::Ring& ring : rings.rings) {
        parts.push_back(
            {{"name", ring.name}, {"fill", numberOf(ring.fill)}, {"percent", ring.percent}, {"value", ring.value}});
    }
    return {{"rating", numberOf(rings.rating)}, {"percent", rings.percent}, {"rings", parts}};
}

Json jsonOf(const Glance::Recovery& recovery) {
    Json signals = Json::array();
    for (const Glance::Signal& signal : recovery.signals) {
        signals.push_back({{"name", signal.name},
                           {"value", signal.value},
                           {"difference", signal.difference},
                           {"tint", nameOf(signal.tint)}});
    }
    return {{"stars", numberOf(recovery.stars)},
            {"starsText", recovery.starsText},
            {"grade", recovery.grade},
            {"signals", signals}};
}

Json jsonOf(const Glance::Night& night) {
    return {
        {"average", night.average},         {"range", night.range},           {"averageOfWeek", night.averageOfWeek},
        {"rangeOfWeek", night.rangeOfWeek}, {"difference", night.difference}, {"change", nameOf(night.change)}};
}

Json jsonOf(const Glance::Temperature& temperature) {
    return {{"today", temperature.today},
            {"baselineName", temperature.baselineName},
            {"baseline", temperature.baseline},
            {"difference", temperature.difference}};
}

Json jsonOf(const Glance::Bank& bank) {
    Json moments = Json::array();
    for (const Glance::Moment& moment : bank.moments) {
        moments.push_back({{"name", moment.name},
                           {"time", moment.time},
                           {"remark", moment.remark},
                           {"remarkedTime", moment.remarkedTime}});
    }
    return {{"fraction", numberOf(bank.fraction)},
            {"percent", bank.percent},
            {"balance", bank.balance},
            {"moments", moments}};
}

template <class Content>
Json jsonOf(const Glance::Card<Content>& card) {
    return {
        {"title", card.title}, {"sentence", card.sentence}, {"content", card.content ? jsonOf(*card.content) : Json()}};
}

}  // namespace

std::string glanceJson(const Glance& glance) {
    constexpr int kOneLine = -1;
    return jsonText({{"day", glance.day},
                     {"language", glance.language},
                     {"direction", glance.isRightToLeft ? "rtl" : "ltr"},
                     {"averageName", glance.averageName},
                     {"rangeName", glance.rangeName},
                     {"weekName", glance.weekName},
                     {"rings", jsonOf(glance.rings)},
                     {"readiness", jsonOf(glance.readiness)},
                     {"sleepFuel", jsonOf(glance.sleepFuel)},
                     {"bloodOxygen", jsonOf(glance.bloodOxygen)},
                     {"respiration", jsonOf(glance.respiration)},
                     {"temperature", jsonOf(glance.temperature)},
                     {"bank", jsonOf(glance.bank)}},
                    kOneLine);
}

}  // namespace lunabrook
