#pragma once

#include "platform/system/values.h"

namespace morva {

/// The nearest whole pixel.
inline int ToPixels(double twips) { return RoundToEven(twips / kTwipsPerPixel); }

inline double ToTwips(double pixels) { return pixels * kTwipsPerPixel; }

}  // namespace morva
