#pragma once

#include <cstdint>

namespace morva {

/// A colour value 0 to 16777215, red in the low byte, green in the middle byte, blue in the high byte; or a system
/// colour constant of the form 800000NN, which stands for desktop colour NN and is looked up whenever it is painted.
using Color = std::uint32_t;

inline constexpr Color kBlack = 0;
inline constexpr Color kWhite = 16777215;
inline constexpr Color kRed = 255;

inline constexpr Color kWindowBackground = 0x80000005;
inline constexpr Color kWindowText = 0x80000008;
inline constexpr Color kButtonFace = 0x8000000F;
inline constexpr Color kButtonShadow = 0x80000010;
inline constexpr Color kButtonText = 0x80000012;
inline constexpr Color kButtonHighlight = 0x80000014;

}  // namespace morva
