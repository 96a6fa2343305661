#pragma once

#include "platform/drawing/colors.h"

namespace morva {

/// The contrast that text needs, and that bold text from 14 points up needs.
inline constexpr double kReadable = 4.5;
inline constexpr double kReadableLarge = 3;

/// The background of a text: one colour value, or a range of them.
struct Ground {
  Color darkest, lightest;
};

/// The background with one more colour value in it.
Ground With(Ground ground, Color color);

/// The contrast of a colour value with the background, where it is least: from 1 (none) to 21 (black on white).
double Contrast(Color color, Ground ground);

/// The colour so many per cent, 0 to 100, of the way from one colour value to another.
Color Mixed(Color from, Color to, int percent);

/// The colour value nearest to the wanted one that has the contrast, towards black or white; black or white itself
/// where the background lies between. Where none has it, the better of black and white.
Color Readable(Color wanted, Ground ground, double contrast = kReadable);

}  // namespace morva
