#include "platform/system/values.h"

#include <gtest/gtest.h>

namespace morva {
namespace {

// The rest is seen where messages are read.
TEST(Values, AreTheNumberThatATextStartsWith) {
  const std::pair<const char*, int> numbers[] = {{" \t12", 12}, {"+7", 7}, {" -7x", -7}, {"1.9", 1}, {"5\1776", 5}};
  for (const auto& [text, number] : numbers) EXPECT_EQ(LeadingNumber(text), number) << text;
  for (const char* text : {"+-7", "-+7", "--7", "- 7", ".5", "\n5"}) EXPECT_FALSE(LeadingNumber(text)) << text;
}

}  // namespace
}  // namespace morva
