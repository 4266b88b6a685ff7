#include "command/picture_cards.h"

#include <algorithm>

#include "command/picture_shapes.h"
#include "platform/text/drawn_text.h"

namespace lunabrook {

namespace {

constexpr double kFigureLine = 40;
constexpr double kStarsLine = 28;
constexpr double kBarLine = 22;
constexpr double kRule = 26;  // the line above the rows and the room around it
constexpr double kRowLine = 21;
constexpr double kRowGap = 9;
constexpr double kGap = 12;  // between texts of one line
constexpr double kBarHeight = 8;
constexpr double kStarSize = 17;
constexpr double kColumnGap = 32;

constexpr double kLeastShrinkage = 0.78;

constexpr Sheet::Style kCardTitle = {"title", 14, true};
constexpr Sheet::Style kFigure = {"figure", 28, true};
constexpr Sheet::Style kFigureWithUnit = {"figure", 28, true, 14};
constexpr Sheet::Style kQuietFigure = {"quiet", 20};
constexpr Sheet::Style kName = {"name", 14};
constexpr Sheet::Style kValue = {"value", 14.5, true};
constexpr Sheet::Style kRemark = {"quiet", 13};

template <class Content>
PictureCard cardOf(const Glance& glance, const Glance::Card<Content>& source,
                   PictureCard (*filled)(const Glance&, const Content&)) {
    PictureCard card;
    if (source.content) {
        card = filled(glance, *source.content);
    } else {
        card.figure = glance.noData;
        card.isQuiet = true;
    }
    card.title = source.title;
    return card;
}

PictureCard recoveryCard(const Glance&, const Glance::Recovery& recovery) {
    PictureCard card{.figure = recovery.grade, .stars = recovery.stars, .starsText = recovery.starsText};
    for (const Glance::Signal& signal : recovery.signals) {
        card.rows.push_back({signal.name, signal.value, signal.difference, "", signal.tint});
    }
    return card;
}

// Phones would draw the arrow as a small picture of its own.
std::string withPlainArrow(const std::string& difference) {
    constexpr std::string_view kAsText = "\uFE0E";
    const bool hasArrow = difference.ends_with("↗") || difference.ends_with("↘");
    return difference + std::string(hasArrow ? kAsText : "");
}

const char* inkNameOf(Change change) {
    return change == Change::rise ? "rise" : change == Change::fall ? "fall" : "quiet";
}

// The week may have values where the night has none.
PictureCard nightCard(const Glance& glance, const Glance::Night& night) {
    const bool isEmpty = night.average.empty();
    PictureCard card{.figure = isEmpty ? glance.noData : night.average,
                     .hasUnit = true,
                     .isQuiet = isEmpty,
                     .aside = withPlainArrow(night.difference),
                     .asideInk = inkNameOf(night.change)};
    if (!night.range.empty()) {
        card.rows.push_back({glance.rangeName, night.range, "", "", Tint::none});
    }
    if (!night.averageOfWeek.empty()) {
        card.rows.push_back({glance.weekName, night.averageOfWeek, "", night.rangeOfWeek, Tint::none});
    }
    return card;
}

PictureCard warmthCard(const Glance&, const Glance::Temperature& temperature) {
    return {.figure = temperature.today,
            .aside = withPlainArrow(temperature.difference),
            .rows = {{temperature.baselineName, temperature.baseline, "", "", Tint::none}}};
}

PictureCard balanceCard(const Glance& glance, const Glance::Bank& bank) {
    PictureCard card{.figure = bank.percent, .aside = bank.balance, .bar = bank.fraction};
    for (const Glance::Moment& moment : bank.moments) {
        card.rows.push_back({moment.name, moment.time.empty() ? glance.noData : moment.time, moment.remark,
                             moment.remarkedTime, Tint::none});
    }
    return card;
}

double heightOfRow(const PictureCard::Row& row) {
    return row.remark.empty() && row.remarkedValue.empty() ? kRowLine : 2 * kRowLine - 2;
}

// A wide card has its rows side by side.
bool hasColumns(const PictureCard& card, double width) {
    constexpr double kLeastColumn = 215;
    const auto count = static_cast<double>(card.rows.size());
    return count > 2 && (width - 2 * kCardPadding) >= count * kLeastColumn + (count - 1) * kColumnGap;
}

double heightOfRows(const PictureCard& card, double width) {
    double sum = 0;
    double most = 0;
    for (const PictureCard::Row& row : card.rows) {
        sum += heightOfRow(row) + (sum > 0 ? kRowGap : 0);
        most = std::max(most, heightOfRow(row));
    }
    return hasColumns(card, width) ? most : sum;
}

void drawRow(const Sheet& sheet, const PictureCard::Row& row, double x, double y, double room) {
    constexpr double kMarkRoom = 21;
    constexpr double kBaseline = 15;
    sheet.pair(kName, row.name, kValue, row.value, x, y + kBaseline, room);
    const double below = y + kBaseline + kRowLine - 1;
    const bool isTinted = row.tint != Tint::none;
    const char* ink = row.tint == Tint::favourable ? "good" : isTinted ? "bad" : kRemark.ink;
    const double indent = isTinted ? kMarkRoom : 0;
    drawMark(sheet.svg, sheet.x(x + 7), below - 4.5, row.tint);
    sheet.pair({ink, kRemark.size}, row.remark, kRemark, row.remarkedValue, x + indent, below, room - indent);
}

void drawRows(const Sheet& sheet, const PictureCard& card, double top) {
    const bool isBeside = hasColumns(card, sheet.width);
    const auto count = static_cast<double>(card.rows.size());
    const double inner = sheet.width - 2 * kCardPadding;
    const double room = isBeside ? (inner - (count - 1) * kColumnGap) / count : inner;
    double x = kCardPadding;
    double y = top + kRule;
    const double rule = top + kRule / 2 + 1;
    sheet.svg.empty("path", {{"class", "rule"},
                             {"d", "M" + svgNumber(kCardPadding) + " " + svgNumber(rule) + "h" + svgNumber(inner)}});
    for (const PictureCard::Row& row : card.rows) {
        drawRow(sheet, row, x, y, room);
        x += isBeside ? room + kColumnGap : 0;
        y += isBeside ? 0 : heightOfRow(row) + kRowGap;
    }
}

}  // namespace

double Sheet::Style::widthOf(std::string_view text) const {
    const std::size_t unit = std::min(text.find(' '), text.size());
    return (widthInEms(text.substr(0, unit)) * size + widthInEms(text.substr(unit)) * unitSize) * emWidth() / size;
}

void Sheet::write(Style style, const char* anchor, double x, double baseline, double room,
                  std::string_view text) const {
    const std::string drawable = drawableText(text);
    if (drawable.empty() || room <= 0) {
        return;
    }
    const double shrinkage = std::clamp(room / style.widthOf(drawable), kLeastShrinkage, 1.0);
    const double size = style.size * shrinkage;
    constexpr double kRounding = 0.01;  // a text that takes just all the room is not cut
    const bool fits = style.widthOf(drawable) * shrinkage <= room + kRounding;
    const std::string shown = fits ? drawable : textFittedToEms(drawable, room / shrinkage / style.emWidth());
    const Svg::Attributes place = {
        {"class", style.ink}, {"x", this->x(x)}, {"y", baseline}, {"font-size", size}, {"text-anchor", anchor}};
    const std::size_t unit = style.unitSize < style.size ? shown.find(' ') : std::string::npos;
    if (unit == std::string::npos) {
        svg.text("text", place, shown);
    } else {
        svg.text("text", place, shown.substr(0, unit + 1), "tspan", {{"font-size", style.unitSize * shrinkage}},
                 shown.substr(unit + 1));
    }
}

void Sheet::leading(Style style, double x, double baseline, double room, std::string_view text) const {
    write(style, "", x, baseline, room, text);
}
void Sheet::trailing(Style style, double x, double baseline, double room, std::string_view text) const {
    write(style, "end", x, baseline, room, text);
}
void Sheet::centred(Style style, double x, double baseline, double room, std::string_view text) const {
    write(style, "middle", x, baseline, room, text);
}

void Sheet::pair(Style left, std::string_view name, Style right, std::string_view value, double x, double baseline,
                 double room) const {
    const double nameRoom = left.widthOf(name);
    const double valueRoom = right.widthOf(value);
    const double gap = nameRoom > 0 && valueRoom > 0 ? kGap : 0;
    const double shared = room - gap;
    const double shrinkage = std::min(1.0, shared / (nameRoom + valueRoom));
    // The value is what matters: it gives way only when it takes more than half.
    const double ofValue = std::min(valueRoom * std::max(shrinkage, kLeastShrinkage),
                                    std::max(shared / 2, shared - nameRoom * kLeastShrinkage));
    leading(left, x, baseline, shared - ofValue, name);
    trailing(right, x + room, baseline, ofValue, value);
}

PictureCard readinessCard(const Glance& glance) { return cardOf(glance, glance.readiness, recoveryCard); }
PictureCard sleepFuelCard(const Glance& glance) { return cardOf(glance, glance.sleepFuel, recoveryCard); }
PictureCard bloodOxygenCard(const Glance& glance) { return cardOf(glance, glance.bloodOxygen, nightCard); }
PictureCard respirationCard(const Glance& glance) { return cardOf(glance, glance.respiration, nightCard); }
PictureCard temperatureCard(const Glance& glance) { return cardOf(glance, glance.temperature, warmthCard); }
PictureCard bankCard(const Glance& glance) { return cardOf(glance, glance.bank, balanceCard); }

double heightOfCard(const PictureCard& card, double width) {
    return 2 * kCardPadding + kCardTitleLine + kFigureLine + (card.stars ? kStarsLine : 0) + (card.bar ? kBarLine : 0) +
           (card.rows.empty() ? 0 : kRule + heightOfRows(card, width));
}

Sheet openCard(Svg& svg, const Box& box, bool isMirrored) {
    svg.open("svg", {{"x", box.x}, {"y", box.y}, {"width", box.width}, {"height", box.height}});
    svg.empty("rect", {{"class", "card"}, {"width", box.width}, {"height", box.height}, {"rx", kCardPadding}});
    return {svg, box.width, isMirrored};
}

void drawCard(Svg& svg, const PictureCard& card, const Box& box, bool isMirrored) {
    const Sheet sheet = openCard(svg, box, isMirrored);
    const double room = box.width - 2 * kCardPadding;
    double y = kCardPadding + kCardTitleLine;
    sheet.leading(kCardTitle, kCardPadding, y - 5, room, card.title);
    y += kFigureLine;
    sheet.pair(card.isQuiet   ? kQuietFigure
               : card.hasUnit ? kFigureWithUnit
                              : kFigure,
               card.figure, {card.asideInk, 16, true}, card.aside, kCardPadding, y - 6, room);
    if (card.stars) {
        const double width = widthOfStars(kStarSize);
        const double left = isMirrored ? box.width - kCardPadding - width : kCardPadding;
        drawStars(svg, {left, y + 5, kStarSize, *card.stars, isMirrored});
        sheet.leading({"name", 14}, kCardPadding + width + kGap, y + 19, room - width - kGap, card.starsText);
        y += kStarsLine;
    }
    if (card.bar) {
        drawBar(svg, {kCardPadding, y + 10, room, kBarHeight, *card.bar, "r1", isMirrored});
        y += kBarLine;
    }
    if (!card.rows.empty()) {
        drawRows(sheet, card, y);
    }
    svg.close();
}

}  // namespace lunabrook
