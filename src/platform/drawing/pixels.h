#pragma once

#include <cmath>

#include "platform/system/values.h"

namespace morva {

/// How many times as large as in the layout everything is; only Zoom sets it.
inline double zoom_factor = 1;

/// The nearest whole pixel; exact halves go up, so that neighbours stay neighbours wherever their window stands.
inline int ToPixels(double twips) { return static_cast<int>(std::floor(twips * zoom_factor / kTwipsPerPixel + 0.5)); }

inline double ToTwips(double pixels) { return pixels * kTwipsPerPixel / zoom_factor; }

}  // namespace morva
