#include "command/picture.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "command/picture_cards.h"
#include "command/picture_shapes.h"
#include "command/picture_style.h"
#include "platform/text/drawn_text.h"

namespace lunabrook {

namespace {

constexpr double kHeaderLine = 42;
constexpr double kLegendLine = 46;
constexpr double kLeastWithHeroBeside = 1080;
constexpr std::size_t kRings = 4;

class MorningPicture {
public:
    MorningPicture(const Glance& glance, double width)
        : glance_(glance),
          width_(width),
          margin_(width < 480 ? 12 : 24),
          gap_(width < 480 ? 12 : 16),
          cards_{readinessCard(glance),   sleepFuelCard(glance),   bloodOxygenCard(glance),
                 respirationCard(glance), temperatureCard(glance), bankCard(glance)} {}

    std::string text() {
        arrange();
        open();
        const Sheet page{svg_, width_, glance_.isRightToLeft};
        page.leading({"day", width_ < 480 ? 18.0 : 20.0, true}, margin_ + 4, margin_ + 24, width_ - 2 * margin_ - 8,
                     glance_.day);
        drawHero();
        for (std::size_t i = 0; i < cards_.size(); ++i) {
            drawCard(svg_, cards_[i], mirrored(boxes_[i]), glance_.isRightToLeft);
        }
        svg_.close();
        return svg_.take();
    }

private:
    using CardRow = std::vector<std::size_t>;

    bool isHeroBeside() const { return width_ >= kLeastWithHeroBeside; }
    bool isLegendBeside() const { return glance_.rings.content && !isHeroBeside() && hero_.width >= 520; }
    double ringsSize() const {
        const double inner = hero_.width - 2 * kCardPadding;
        return std::min(isLegendBeside() ? inner * 0.45 : inner, isHeroBeside() ? 340.0 : 300.0);
    }

    Box mirrored(Box box) const {
        box.x = glance_.isRightToLeft ? width_ - box.x - box.width : box.x;
        return box;
    }

    // Which cards stand side by side in an area so wide.
    static std::vector<CardRow> rowsOfCards(double width) {
        if (width >= 680) {
            return {{0, 1}, {2, 3, 4}, {5}};
        }
        return width >= 520 ? std::vector<CardRow>{{0, 1}, {2, 3}, {4}, {5}}
                            : std::vector<CardRow>{{0}, {1}, {2}, {3}, {4}, {5}};
    }

    double widthInRow(const CardRow& row, double width) const {
        const auto count = static_cast<double>(row.size());
        return (width - (count - 1) * gap_) / count;
    }

    // Every box, and with them the height of the picture.
    void arrange() {
        const double top = margin_ + (glance_.day.empty() ? 0 : kHeaderLine);
        const double whole = width_ - 2 * margin_;
        hero_ = {margin_, top, isHeroBeside() ? std::clamp(width_ * 0.31, 300.0, 460.0) : whole, 0};
        hero_.height = heightOfHero();
        Box area{margin_, top + hero_.height + gap_, whole, 0};
        if (isHeroBeside()) {
            area = {hero_.x + hero_.width + gap_, top, whole - hero_.width - gap_, hero_.height};
        }
        arrangeCards(area);
        const double foot = boxes_.back().y + boxes_.back().height;
        hero_.height = isHeroBeside() ? foot - top : hero_.height;
        height_ = foot + margin_;
    }

    // Rows as high as their cards, and higher where the area is.
    void arrangeCards(const Box& area) {
        const std::vector<CardRow> rows = rowsOfCards(area.width);
        std::vector<double> heights;
        for (const CardRow& row : rows) {
            double height = 0;
            for (const std::size_t card : row) {
                height = std::max(height, heightOfCard(cards_[card], widthInRow(row, area.width)));
            }
            heights.push_back(height);
        }
        const auto count = static_cast<double>(rows.size());
        const double taken = std::accumulate(heights.begin(), heights.end(), (count - 1) * gap_);
        const double spare = std::max(area.height - taken, 0.0) / count;
        double y = area.y;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const double width = widthInRow(rows[i], area.width);
            double x = area.x;
            for (const std::size_t card : rows[i]) {
                boxes_[card] = {x, y, width, heights[i] + spare};
                x += width + gap_;
            }
            y += heights[i] + spare + gap_;
        }
    }

    double heightOfLegend() const { return glance_.rings.content ? static_cast<double>(kRings) * kLegendLine : 0; }
    double heightOfHero() const {
        const double legend = heightOfLegend();
        const double inner =
            isLegendBeside() ? std::max(ringsSize(), legend) : ringsSize() + (legend > 0 ? 16 + legend : 0);
        return 2 * kCardPadding + kCardTitleLine + 12 + inner;
    }

    void open() {
        svg_.open("svg", {{"xmlns", "http://www.w3.org/2000/svg"},
                          {"class", "lunabrook"},
                          {"lang", glance_.language},
                          {"xml:lang", glance_.language},
                          {"direction", glance_.isRightToLeft ? "rtl" : ""},
                          {"width", width_},
                          {"height", height_},
                          {"viewBox", "0 0 " + svgNumber(width_) + " " + svgNumber(height_)},
                          {"role", "img"}});
        svg_.text("title", {}, drawableText(glance_.day + (glance_.day.empty() ? "" : ": ") + spoken(glance_.rings)));
        svg_.text("desc", {}, drawableText(spokenBelow()));
        svg_.text("style", {}, kPictureStyle);
        svg_.empty("rect", {{"class", "page"}, {"width", width_}, {"height", height_}});
    }

    template <class Content>
    std::string spoken(const Glance::Card<Content>& card) const {
        return card.content ? card.sentence : card.title + ": " + glance_.noData + ".";
    }
    std::string spokenBelow() const {
        return spoken(glance_.readiness) + "\n" + spoken(glance_.sleepFuel) + "\n" + spoken(glance_.bloodOxygen) +
               "\n" + spoken(glance_.respiration) + "\n" + spoken(glance_.temperature) + "\n" + spoken(glance_.bank);
    }

    void drawHero() {
        const Sheet sheet = openCard(svg_, mirrored(hero_), glance_.isRightToLeft);
        const double room = hero_.width - 2 * kCardPadding;
        sheet.leading({"title", 14, true}, kCardPadding, kCardPadding + 13, room, glance_.rings.title);
        const double size = ringsSize();
        const double top = kCardPadding + kCardTitleLine + 12;
        const double below = hero_.height - top - kCardPadding;
        const double legend = heightOfLegend();
        const double spare = isLegendBeside() ? below - size : below - size - legend - (legend > 0 ? 16 : 0);
        const double x = isLegendBeside() ? kCardPadding + size / 2 : hero_.width / 2;
        drawRings(sheet, x, top + spare / 2 + size / 2, size);
        if (glance_.rings.content) {
            const double start = isLegendBeside() ? kCardPadding + size + 40 : kCardPadding;
            drawLegend(sheet, start,
                       isLegendBeside() ? top + (below - legend) / 2 : hero_.height - kCardPadding - legend);
        }
        svg_.close();
    }

    void drawRings(const Sheet& sheet, double x, double y, double size) {
        const double thickness = size * 0.062;
        const double step = thickness * 1.24;
        double radius = (size - thickness) / 2;
        for (std::size_t i = 0; i < kRings; ++i, radius -= step) {
            const double fill = glance_.rings.content ? glance_.rings.content->rings.at(i).fill : 0;
            drawRing(svg_, {sheet.x(x), y, radius, thickness, fill, kRingInks[i], kLapInks[i]});
        }
        const double within = 2 * radius;
        if (glance_.rings.content) {
            const double large = size * 0.165;
            sheet.centred({"figure", large, true}, x, y + large * 0.36, within, glance_.rings.content->percent);
        } else {
            sheet.centred({"quiet", 15}, x, y + 5, within, glance_.noData);
        }
    }

    void drawLegend(const Sheet& sheet, double x, double y) {
        constexpr double kDotRoom = 22;
        const double room = hero_.width - kCardPadding - x - kDotRoom;
        for (std::size_t i = 0; i < kRings; ++i, y += kLegendLine) {
            const Glance::Ring& ring = glance_.rings.content->rings.at(i);
            svg_.empty(
                "circle",
                {{"class", std::string("dot ") + kRingInks[i]}, {"cx", sheet.x(x + 6)}, {"cy", y + 16}, {"r", 6}});
            sheet.pair({"name", 15}, ring.name, {"value", 17, true}, ring.percent, x + kDotRoom, y + 21, room);
            sheet.leading({"quiet", 13}, x + kDotRoom, y + 38, room, ring.value);
        }
    }

    const Glance& glance_;
    double width_;
    double height_ = 0;
    double margin_;
    double gap_;
    std::array<PictureCard, 6> cards_;
    std::array<Box, 6> boxes_;
    Box hero_;
    Svg svg_;
};

}  // namespace

std::string morningPicture(const Glance& glance, int width) { return MorningPicture(glance, width).text(); }

}  // namespace lunabrook
