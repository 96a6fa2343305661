#include "platform/system/values.h"

#include <gtest/gtest.h>

#include <climits>

namespace morva {
namespace {

TEST(Values, AreTheNumberThatATextStartsWith) {
  const std::pair<const char*, int> numbers[] = {
      {"0", 0},   {"63", 63},    {"007", 7},  {" \t12", 12},          {"+7", 7}, {" -7x", -7}, {"1 34", 1},
      {"1.9", 1}, {"5\1776", 5}, {"0x10", 0}, {"2147483648", INT_MAX}};
  for (const auto& [text, number] : numbers) EXPECT_EQ(LeadingNumber(text), number) << text;
  EXPECT_EQ(Val("-99999999999"), -INT_MAX);
  for (const char* text : {"", " ", "x1", "-", "+-7", "-+7", "--7", "- 7", ".5", "\n5", "\xD9\xA3"}) {
    EXPECT_TRUE(!LeadingNumber(text) && Val(text) == 0) << text;
  }
}

}  // namespace
}  // namespace morva
