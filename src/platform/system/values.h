#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morva {

inline constexpr int kTwipsPerPixel = 15;

/// The number that the text starts with, blanks before it skipped and a sign allowed; nothing where there is none.
/// A number too large for the type reads as the largest there is.
std::optional<int> LeadingNumber(std::string_view text);

/// The value of the number that the text starts with, 0 where there is none.
int Val(std::string_view text);

/// The number in decimal with at least two digits: 7 gives "07".
std::string TwoDigits(int number);

/// Rounds to the nearest whole number, an exact half to the even neighbour.
int RoundToEven(double value);

}  // namespace morva
