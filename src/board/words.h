#pragma once

#include <string>

#include "platform/drawing/colors.h"

namespace morva {

/// The name of square i, 0 to 63: "A1" at the top left, "H1" at the top right, "H8" at the bottom right.
std::string SquareName(int i);

/// The word of a piece code, for instance "king checker" for 8; empty for kNothing and for an invalid code.
std::string PieceWord(int code);

/// "black " for kBlack, "white " for any other colour, each with its blank.
std::string ColorWord(Color color);

}  // namespace morva
