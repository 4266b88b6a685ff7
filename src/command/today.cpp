#include "command/today.h"

#include <string_view>
#include <vector>

#include "command/page.h"

namespace lunabrook {

namespace {

constexpr int kNameColumns = 23;

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

std::string stars(double value) {
    constexpr int kMost = 5;
    const int full = filledSigns(value / kMost, kMost);
    return repeated("★", full) + repeated("⭒", kMost - full);
}

Cell name(const std::string& text) { return {"  " + text}; }
Cell heading(const std::string& text) { return {text, Ink::heading}; }

Ink inkOf(Tint tint) {
    return tint == Tint::favourable ? Ink::good : tint == Tint::unfavourable ? Ink::bad : Ink::plain;
}
Ink inkOf(Change change) {
    return change == Change::rise ? Ink::rise : change == Change::fall ? Ink::fall : Ink::plain;
}

class GlancePage {
public:
    GlancePage(const Glance& glance, int columns, bool hasColours) : glance_(glance), page_(columns, hasColours) {}

    std::string text() {
        page_.addTable({{}}, {{heading(glance_.day)}});
        page_.addBlank();
        addRings(glance_.rings);
        page_.addBlank();
        addRecovery(glance_.readiness);
        page_.addBlank();
        addRecovery(glance_.sleepFuel);
        page_.addBlank();
        addNights();
        page_.addBlank();
        addBank(glance_.bank);
        return page_.text();
    }

private:
    std::string bar(double fraction) const {
        constexpr int kLeastWithWholeBars = 60;
        const int columns = page_.columns() < kLeastWithWholeBars ? 10 : 20;
        const int full = filledSigns(fraction, columns);
        return repeated("█", full) + repeated("░", columns - full);
    }

    Cell noData() const { return {glance_.noData, Ink::quiet}; }
    void addWithoutData(const std::string& title) {
        page_.addTable({{kNameColumns}, {}}, {{heading(title), noData()}});
    }

    void addRings(const Glance::Card<Glance::Rings>& card) {
        if (!card.content) {
            return addWithoutData(card.title);
        }
        const Glance::Rings& rings = *card.content;
        std::vector<Row> rows{{heading(card.title), {bar(rings.rating)}, {rings.percent}}};
        for (const Glance::Ring& ring : rings.rings) {
            const Ink ink = ring.fill >= 1 ? Ink::good : Ink::plain;
            rows.push_back({name(ring.name), {bar(ring.fill), ink}, {ring.percent}, {ring.value}});
        }
        page_.addTable({{kNameColumns}, {}, {.columns = 6, .isRight = true}, {.rank = 1}}, std::move(rows));
    }

    void addRecovery(const Glance::Card<Glance::Recovery>& card) {
        if (!card.content) {
            return addWithoutData(card.title);
        }
        const Glance::Recovery& recovery = *card.content;
        page_.addTable({{kNameColumns}, {}, {}, {}},
                       {{heading(card.title), {stars(recovery.stars)}, {recovery.starsText}, {recovery.grade}}});
        std::vector<Row> rows;
        for (const Glance::Signal& signal : recovery.signals) {
            rows.push_back({name(signal.name), {signal.value}, {signal.difference, inkOf(signal.tint)}});
        }
        page_.addTable({{kNameColumns}, {.columns = 11}, {.rank = 1}}, std::move(rows));
    }

    Row nightRow(const Glance::Card<Glance::Night>& card) const {
        if (!card.content) {
            return {heading(card.title), noData()};
        }
        const Glance::Night& night = *card.content;
        return {heading(card.title),   {night.average},     {night.range},
                {night.averageOfWeek}, {night.rangeOfWeek}, {night.difference, inkOf(night.change)}};
    }

    Row temperatureRow(const Glance::Card<Glance::Temperature>& card) const {
        if (!card.content) {
            return {heading(card.title), noData()};
        }
        const Glance::Temperature& temperature = *card.content;
        const std::string baseline = temperature.baselineName + " " + temperature.baseline;
        return {heading(card.title),     {temperature.today}, {baseline, Ink::plain, true}, {}, {},
                {temperature.difference}};
    }

    void addNights() {
        std::vector<Row> rows;
        if (glance_.bloodOxygen.content || glance_.respiration.content) {
            const auto over = [](const std::string& text) { return Cell{text, Ink::quiet, true}; };
            rows.push_back({{}, over(glance_.averageName), over(glance_.rangeName), over(glance_.weekName)});
        }
        rows.push_back(nightRow(glance_.bloodOxygen));
        rows.push_back(nightRow(glance_.respiration));
        rows.push_back(temperatureRow(glance_.temperature));
        page_.addTable({{kNameColumns},
                        {.columns = 11},
                        {.columns = 13, .rank = 1},
                        {.columns = 9, .rank = 2},
                        {.columns = 15, .rank = 3},
                        {}},
                       std::move(rows));
    }

    void addBank(const Glance::Card<Glance::Bank>& card) {
        if (!card.content) {
            return addWithoutData(card.title);
        }
        const Glance::Bank& bank = *card.content;
        page_.addTable({{kNameColumns}, {}, {.columns = 6, .isRight = true}, {.rank = 1}},
                       {{heading(card.title), {bar(bank.fraction)}, {bank.percent}, {bank.balance}}});
        std::vector<Row> rows;
        for (const Glance::Moment& moment : bank.moments) {
            const std::string remark = moment.remark + (moment.remarkedTime.empty() ? "" : " " + moment.remarkedTime);
            const Cell time = moment.time.empty() ? noData() : Cell{moment.time};
            rows.push_back({name(moment.name), time, {remark, Ink::quiet}});
        }
        page_.addTable({{kNameColumns}, {.columns = 11}, {.rank = 1}}, std::move(rows));
    }

    const Glance& glance_;
    Page page_;
};

}  // namespace

std::string todayText(const Glance& glance, int columns, bool hasColours) {
    return GlancePage(glance, columns, hasColours).text();
}

}  // namespace lunabrook
