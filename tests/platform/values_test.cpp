#include "platform/values.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace morva {
namespace {

TEST(Values, ReadTheNumberThatATextStartsWith) {
  const std::pair<std::string, int> numbers[] = {{"0", 0},
                                                 {"63", 63},
                                                 {"007", 7},
                                                 {" \t12", 12},
                                                 {"+7", 7},
                                                 {"-7", -7},
                                                 {" -7x", -7},
                                                 {"12 34", 12},
                                                 {"1.9", 1},
                                                 {"0x10", 0},
                                                 {"1e3", 1},
                                                 {"16777215", kTwipsPerPixel * 1118481},
                                                 {"2147483647", INT_MAX},
                                                 {"2147483648", INT_MAX},
                                                 {"99999999999999999999", INT_MAX},
                                                 {"-99999999999", -INT_MAX},
                                                 {std::string("5\0"
                                                              "6",
                                                              3),
                                                  5}};
  for (const auto& [text, number] : numbers) {
    EXPECT_EQ(LeadingNumber(text), number) << text;
    EXPECT_EQ(Val(text), number) << text;
  }
  for (const std::string text : {"", " ", "x1", "-", "+", "- 7", "+-7", "-+7", "--7", ".5", "\n5", "\xD9\xA3"}) {
    EXPECT_EQ(LeadingNumber(text), std::nullopt) << text;
    EXPECT_EQ(Val(text), 0) << text;
  }
}

TEST(Values, WriteAndRoundNumbers) {
  for (const auto& [number, text] : {std::pair{0, "00"}, {7, "07"}, {10, "10"}, {63, "63"}, {100, "100"}}) {
    EXPECT_EQ(TwoDigits(number), text);
  }
  for (const auto& [value, whole] : {std::pair{0.5, 0}, {1.5, 2}, {2.5, 2}, {2.51, 3}, {-0.5, 0}, {-1.5, -2}}) {
    EXPECT_EQ(RoundToEven(value), whole) << value;
  }
}

}  // namespace
}  // namespace morva
