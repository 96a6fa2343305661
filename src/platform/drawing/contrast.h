#pragma once

#include "platform/drawing/colors.h"

namespace morva {

/// The contrast from which text is read without trouble, and bold text from 14 points up.
inline constexpr double kReadable = 4.5;
inline constexpr double kReadableLarge = 3;

/// What stands behind a text: one colour value, or all those between two.
struct Ground {
  Color darkest, lightest;
};

/// The ground with one more colour value in it.
Ground With(Ground ground, Color color);

/// How clearly a colour value stands out from the ground, where it does so least: 1 not at all, 21 black from white.
double Contrast(Color color, Ground ground);

/// The colour value nearest to the wanted one that has the contrast: towards black or white, and all the way where the
/// ground lies between. Black or white, whichever is better, where none has it.
Color Readable(Color wanted, Ground ground, double contrast = kReadable);

}  // namespace morva
