#include "net/text.h"

#include <gtest/gtest.h>

#include <string>

namespace morva {
namespace {

std::string Bad(std::size_t count) {
  std::string text;
  while (text.size() < 3 * count) text += "\uFFFD";
  return text;
}

TEST(Text, IsSentAsOneByteACharacterWhereThatIsClear) {
  const std::pair<std::string, std::string> cases[] = {
      {"", ""},
      {"e2-e4?", "e2-e4?"},
      {"café", "caf\xE9"},
      {"ÿ\u00A0", "\xFF\xA0"},
      {"Ã©", "\xC3\x83\xC2\xA9"},      // as two bytes it would come back as é
      {"é Ã©", "\xE9 \xC3\xA9"},       // one byte that is not UTF-8 makes it all clear
      {"é€", "\xC3\xA9\xE2\x82\xAC"},  // one character without a byte, and all go as UTF-8
      {"♞😀", "\xE2\x99\x9E\xF0\x9F\x98\x80"}};
  for (const auto& [text, bytes] : cases) EXPECT_TRUE(BytesOf(text) == bytes && TextOf(bytes) == text) << text;
  EXPECT_EQ(BytesOf("a\xFF"), "a" + Bad(1));
}

TEST(Text, PastedIntoOneLineHasBlanksForLineEnds) { EXPECT_EQ(SingleLine("a\tb\nc\rd\r\ne\n\rf\r"), "a b c d e  f "); }

TEST(Text, PrintableReplacesControlsAndNothingNextToThem) {
  const std::string kept =
      " ~\u00A0\u07FF\u0800\u200D\u2010\u2027\u202F\u2065\u206A\uD7FF\uE000\uFEFE\uFF00\uFFFF\U00010000\U0010FFFF";
  EXPECT_EQ(Printable(kept), kept);
  EXPECT_EQ(Printable("\x01\x1F\x7F\u0080\u009F\u200E\u200F\u2028\u202E\u2066\u2069\uFEFF"), Bad(12));
}

TEST(Text, PrintableReplacesEveryInvalidByte) {
  for (const std::string bytes :
       {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC3", "\xE0\x9F\xBF", "\xE2\x82", "\xED\xA0\x80", "\xED\xBF\xBF",
        "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80", "\xFE", "\xFF\xFF", "\xF0\x9F\x98"}) {
    EXPECT_EQ(Printable("a" + bytes + "é"), "a" + Bad(bytes.size()) + "é") << testing::PrintToString(bytes);
  }
  EXPECT_EQ(Printable(std::string_view("aé").substr(0, 2)), "a" + Bad(1)) << "nothing behind the end is looked at";
}

}  // namespace
}  // namespace morva
