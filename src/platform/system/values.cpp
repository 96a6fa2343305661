#include "platform/system/values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace morva {

std::optional<int> LeadingNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (end == text.data() || text.starts_with('-')) return std::nullopt;
  if (error == std::errc::result_out_of_range) number = std::numeric_limits<int>::max();
  return negative ? -number : number;
}

int Val(std::string_view text) { return LeadingNumber(text).value_or(0); }

std::string TwoDigits(int number) {
  const std::string digits = std::to_string(number);
  return digits.size() < 2 ? "0" + digits : digits;
}

int RoundToEven(double value) { return static_cast<int>(std::nearbyint(value)); }

}  // namespace morva
