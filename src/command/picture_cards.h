// The cards of the picture of the morning: a title, one large figure, rows of names and values below it.
//
//   Readiness
//   Good
//   ★★★★☆ 3.98
//   ----------------------
//   HRV              58 ms
//   ✓ 6 above baseline

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "command/glance.h"
#include "command/svg.h"

namespace lunabrook {

inline constexpr double kCardPadding = 20;
inline constexpr double kCardTitleLine = 18;

struct Box {
    double x = 0, y = 0, width = 0, height = 0;
};

// What the reader's language wants of every drawing.
struct Sheet {
    Svg& svg;
    double width;     // of the part that is drawn on
    bool isMirrored;  // x counts from the right

    double x(double fromLeading) const { return isMirrored ? width - fromLeading : fromLeading; }

    struct Style {
        const char* ink;
        double size;
        bool isBold = false;
        double unitSize = size;  // of what follows the first blank: "14.4 BrPM"

        double emWidth() const { return isBold ? size : size * 0.92; }
        double widthOf(std::string_view text) const;
    };
    // From `x` on; shrunk, and if that is not enough cut, to the room there is.
    void leading(Style style, double x, double baseline, double room, std::string_view text) const;
    // Up to `x`.
    void trailing(Style style, double x, double baseline, double room, std::string_view text) const;
    void centred(Style style, double x, double baseline, double room, std::string_view text) const;
    // Two texts of one line from `x` on, which share the room fairly.
    void pair(Style left, std::string_view name, Style right, std::string_view value, double x, double baseline,
              double room) const;

private:
    void write(Style style, const char* anchor, double x, double baseline, double room, std::string_view text) const;
};

struct PictureCard {
    struct Row {
        std::string name, value;
        std::string remark, remarkedValue;  // on a line below; empty
        Tint tint = Tint::none;             // of the remark
    };

    std::string title = {};
    std::string figure = {};
    bool hasUnit = false;    // in the figure, behind a blank
    bool isQuiet = false;    // the figure says that there are no data
    std::string aside = {};  // beside the figure
    const char* asideInk = "quiet";
    std::optional<float> stars = {};
    std::string starsText = {};
    std::optional<float> bar = {};
    std::vector<Row> rows = {};
};

PictureCard readinessCard(const Glance& glance);
PictureCard sleepFuelCard(const Glance& glance);
PictureCard bloodOxygenCard(const Glance& glance);
PictureCard respirationCard(const Glance& glance);
PictureCard temperatureCard(const Glance& glance);
PictureCard bankCard(const Glance& glance);

double heightOfCard(const PictureCard& card, double width);

// Nothing is drawn beyond the box, whatever the fonts.
void drawCard(Svg& svg, const PictureCard& card, const Box& box, bool isMirrored);

// An empty card, which the caller fills and closes.
Sheet openCard(Svg& svg, const Box& box, bool isMirrored);

}  // namespace lunabrook
