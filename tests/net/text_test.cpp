#include "net/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace morva {
namespace {

const std::string kBad = "\uFFFD";

std::string Utf8(unsigned code) {
  const auto tail = [code](int shift) { return static_cast<char>(0x80 + (code >> shift) % 64); };
  if (code < 0x80) return {static_cast<char>(code)};
  if (code < 0x800) return {static_cast<char>(0xC0 + code / 64), tail(0)};
  if (code < 0x10000) return {static_cast<char>(0xE0 + code / 4096), tail(6), tail(0)};
  return {static_cast<char>(0xF0 + code / 262144), tail(12), tail(6), tail(0)};
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
  EXPECT_EQ(BytesOf("a\xFF"), "a" + kBad);
}

TEST(Text, ComesBackAsItWasSent) {
  // Many of them from characters of one byte alone, where the two encodings can be mistaken for each other.
  const struct {
    unsigned first, count;
  } ranges[] = {{0xA0, 0x20}, {0xC2, 0x33}, {0x20, 0x5F}, {0x100, 0x1E00}, {0x3000, 0xA800}, {0x10000, 0x100000}};
  for (unsigned seed = 1; seed <= 20000; ++seed) {
    std::mt19937 random(seed);
    const unsigned kinds = 1 + random() % 6;
    std::string text;
    for (unsigned left = 1 + random() % 6; left > 0; --left) {
      const auto& range = ranges[random() % kinds];
      text += Utf8(range.first + random() % range.count);
    }
    ASSERT_EQ(TextOf(BytesOf(text)), text) << "seed " << seed;
  }
}

TEST(Text, ThatArrivesIsUtf8OrElseOneByteACharacter) {
  const std::pair<std::string, std::string> cases[] = {{"caf\xC3\xA9", "café"},
                                                       {"\xC3\xA9 \xE9", "Ã© é"},
                                                       {"\xC3", "Ã"},
                                                       {"a\x95z", "a" + kBad + "z"},
                                                       {"\xE2\x80\xAE-", kBad + "-"}};
  for (const auto& [bytes, text] : cases) EXPECT_EQ(TextOf(bytes), text);
}

TEST(Text, PastedIntoOneLineHasBlanksForLineEnds) { EXPECT_EQ(SingleLine("a\tb\nc\rd\r\ne\n\rf\r"), "a b c d e  f "); }

TEST(Text, PrintableReplacesControlsAndNothingNextToThem) {
  const std::pair<unsigned, unsigned> controls[] = {{0, 0x1F},        {0x7F, 0x9F},     {0x200E, 0x200F},
                                                    {0x2028, 0x202E}, {0x2066, 0x2069}, {0xFEFF, 0xFEFF}};
  for (const auto& [first, last] : controls) {
    for (unsigned code = first; code <= last; ++code) EXPECT_EQ(Printable("a" + Utf8(code) + "z"), "a" + kBad + "z");
    for (const unsigned code : {std::max(first, 0x21u) - 1, last + 1}) EXPECT_EQ(Printable(Utf8(code)), Utf8(code));
  }
}

TEST(Text, PrintableReplacesEveryInvalidByte) {
  for (const unsigned valid : {0x7Eu, 0xA0u, 0x7FFu, 0x800u, 0xD7FFu, 0xE000u, 0xFFFFu, 0x10000u, 0x10FFFFu}) {
    EXPECT_EQ(Printable(Utf8(valid)), Utf8(valid)) << valid;
  }
  EXPECT_EQ(Printable(std::string_view("aé").substr(0, 2)), "a" + kBad) << "nothing behind the end is looked at";
  for (const std::string bytes :
       {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC3", "\xE0\x9F\xBF", "\xE2\x82", "\xED\xA0\x80", "\xED\xBF\xBF",
        "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80", "\xFE", "\xFF\xFF", "\xF0\x9F\x98"}) {
    std::string expected = "a";
    for (std::size_t i = 0; i < bytes.size(); ++i) expected += kBad;
    EXPECT_EQ(Printable("a" + bytes + "é"), expected + "é") << testing::PrintToString(bytes);
  }
}

}  // namespace
}  // namespace morva
