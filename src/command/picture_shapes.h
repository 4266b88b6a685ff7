// The shapes of the picture of the morning: rings that fill clockwise from twelve o'clock, stars, bars, marks.
//
// A fraction that is no number or below 0 fills nothing.

#pragma once

#include <string>

#include "command/glance.h"
#include "command/svg.h"

namespace lunabrook {

struct RingShape {
    double x = 0, y = 0;  // the centre
    double radius = 0;    // of the line's middle
    double thickness = 0;
    double fill = 0;       // beyond 1 a second lap lies on the first one; beyond 2 nothing is added
    const char* ink = "";  // classes that colour it and its second lap
    const char* lapInk = "";
};
void drawRing(Svg& svg, const RingShape& ring);

// The path of a lap whose round ends reach exactly from 0 to `fraction` of the ring; a dot where there is no room for
// two ends.
std::string lapPath(const RingShape& ring, double fraction);

// Five stars, so many of them full; a part of a star is a part of it.
struct StarsShape {
    double x = 0, y = 0;  // the upper left corner
    double size = 0;      // of one
    double count = 0;
    bool isMirrored = false;  // fills from the right
};
double widthOfStars(double size);
void drawStars(Svg& svg, const StarsShape& stars);

// A lying bar with round ends.
struct BarShape {
    double x = 0, y = 0, width = 0, height = 0;
    double fraction = 0;
    const char* ink = "";
    bool isMirrored = false;
};
void drawBar(Svg& svg, const BarShape& bar);

// A tick for what is favourable, an exclamation mark for what is not: colour alone tells nothing to many.
void drawMark(Svg& svg, double x, double y, Tint tint);

}  // namespace lunabrook
