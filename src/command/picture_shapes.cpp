#include "command/picture_shapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lunabrook {

namespace {

constexpr double kTurn = 2 * std::numbers::pi;
constexpr int kStars = 5;

// Within 0 to `most`; what is no number is 0.
double within(double value, double most) { return value > 0 ? std::min(value, most) : 0; }

std::string point(double x, double y) { return svgNumber(x) + " " + svgNumber(y); }

// At an angle from twelve o'clock, clockwise.
std::string pointOnRing(const RingShape& ring, double angle) {
    return point(ring.x + ring.radius * std::sin(angle), ring.y - ring.radius * std::cos(angle));
}

std::string starPath(double left, double size) {
    constexpr int kCorners = 10;
    constexpr double kInnerRadius = 0.46;  // of the outer one
    const double outer = size / 2;
    std::string path;
    for (int corner = 0; corner < kCorners; ++corner) {
        const double radius = corner % 2 == 0 ? outer : outer * kInnerRadius;
        const double angle = kTurn * corner / kCorners;
        path += (corner == 0 ? "M" : "L") +
                point(left + outer + radius * std::sin(angle), outer - radius * std::cos(angle));
    }
    return path + "Z";
}

double starStep(double size) { return size * 1.15; }

std::string starsPath(double size) {
    std::string path;
    for (int star = 0; star < kStars; ++star) {
        path += starPath(star * starStep(size), size);
    }
    return path;
}

}  // namespace

std::string lapPath(const RingShape& ring, double fraction) {
    const double end = std::asin(ring.thickness / 2 / ring.radius);  // what a round end takes of the turn
    const double from = end;
    const double to = std::max(kTurn * fraction - end, from);
    const bool isDot = to - from < 0.001;
    const std::string start = "M" + pointOnRing(ring, from);
    if (isDot) {
        return start + "h.01";
    }
    const std::string radius = svgNumber(ring.radius);
    return start + "A" + radius + " " + radius + " 0 " + (to - from > kTurn / 2 ? "1" : "0") + " 1 " +
           pointOnRing(ring, to);
}

void drawRing(Svg& svg, const RingShape& ring) {
    const double fill = within(ring.fill, 2);
    const auto circle = [&](const char* name) {
        svg.empty("circle", {{"class", name}, {"cx", ring.x}, {"cy", ring.y}, {"r", ring.radius}});
    };
    svg.open("g", {{"class", ring.ink}, {"stroke-width", ring.thickness}});
    circle("track");
    if (fill >= 1) {
        circle("lap");
    } else if (fill > 0) {
        svg.empty("path", {{"class", "lap"}, {"d", lapPath(ring, fill)}});
    }
    if (fill > 1) {
        svg.empty("path", {{"class", std::string("lap ") + ring.lapInk}, {"d", lapPath(ring, fill - 1)}});
    }
    svg.close();
}

double widthOfStars(double size) { return (kStars - 1) * starStep(size) + size; }

void drawStars(Svg& svg, const StarsShape& stars) {
    const double count = within(stars.count, kStars);
    const double whole = std::floor(count);
    const double full = std::min(whole * starStep(stars.size) + (count - whole) * stars.size, widthOfStars(stars.size));
    const std::string path = starsPath(stars.size);
    const double left = stars.isMirrored ? widthOfStars(stars.size) - full : 0;
    svg.empty("path", {{"class", "empty"},
                       {"transform", "translate(" + svgNumber(stars.x) + " " + svgNumber(stars.y) + ")"},
                       {"d", path}});
    if (full > 0) {
        // An inner picture cuts off what is beyond it.
        svg.open("svg", {{"x", stars.x + left},
                         {"y", stars.y},
                         {"width", full},
                         {"height", stars.size},
                         {"viewBox", point(left, 0) + " " + point(full, stars.size)}});
        svg.empty("path", {{"class", "star"}, {"d", path}});
        svg.close();
    }
}

void drawBar(Svg& svg, const BarShape& bar) {
    const double fraction = within(bar.fraction, 1);
    const double width = fraction > 0 ? std::max(fraction * bar.width, bar.height) : 0;
    const auto part = [&](const char* name, double x, double length) {
        svg.empty("rect", {{"class", name},
                           {"x", x},
                           {"y", bar.y},
                           {"width", length},
                           {"height", bar.height},
                           {"rx", bar.height / 2}});
    };
    svg.open("g", {{"class", bar.ink}});
    part("under", bar.x, bar.width);
    if (width > 0) {
        part("over", bar.isMirrored ? bar.x + bar.width - width : bar.x, width);
    }
    svg.close();
}

void drawMark(Svg& svg, double x, double y, Tint tint) {
    constexpr double kRadius = 7;
    if (tint == Tint::none) {
        return;
    }
    const bool isGood = tint == Tint::favourable;
    svg.open("g", {{"class", isGood ? "good" : "bad"}});
    svg.empty("circle", {{"cx", x}, {"cy", y}, {"r", kRadius}});
    svg.empty("path",
              {{"class", "sign"},
               {"d", "M" + (isGood ? point(x - 3, y) + "l2.2 2.4l3.8-4.6" : point(x, y - 3.4) + "v3.6m0 2.6v.4")}});
    svg.close();
}

}  // namespace lunabrook
