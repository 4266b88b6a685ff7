// The morning at a glance as a picture: one SVG that needs nothing beside it.

#pragma once

#include <string>

#include "command/glance.h"

namespace lunabrook {

inline constexpr int kLeastPictureWidth = 320;
inline constexpr int kMostPictureWidth = 1600;
inline constexpr int kUsualPictureWidth = 1200;

// Four rings around the rating, the cards beside them or, in a narrow picture, below; as high as that takes. Light or
// dark as the viewer prefers; title and description hold the sentences for those who listen. `width` in pixels.
std::string morningPicture(const Glance& glance, int width);

}  // namespace lunabrook
