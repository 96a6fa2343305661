#include "net/message_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace morva {
namespace {

using Messages = std::vector<std::string>;

const std::string kBoard = "1__" + std::string(64, 'p');

Messages Drain(MessageReader& reader) {
  Messages messages;
  while (auto message = reader.Next()) messages.push_back(*message);
  return messages;
}

// The grammar as a table: what is out at once, how long the quiet must be for the rest, and what it brings out.
struct Case {
  std::string bytes;
  Messages at_once;
  int quiet_needed;
  Messages after_quiet;
};

void Check(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    for (const std::size_t piece : {std::max<std::size_t>(1, c.bytes.size()), std::size_t{1}, std::size_t{3}}) {
      SCOPED_TRACE("\"" + c.bytes.substr(0, 90) + "\" in pieces of " + std::to_string(piece));
      MessageReader reader;
      for (std::size_t at = 0; at < c.bytes.size(); at += piece) reader.Bytes(c.bytes.substr(at, piece));
      EXPECT_EQ(Drain(reader), c.at_once);
      EXPECT_EQ(reader.QuietNeeded(), c.quiet_needed);
      reader.Quiet();
      EXPECT_EQ(Drain(reader), c.after_quiet);
      EXPECT_EQ(reader.QuietNeeded(), 0);
      EXPECT_EQ(reader.Held(), 0u);
      reader.Bytes("15236");
      EXPECT_EQ(Drain(reader), Messages{"15236"}) << "a quiet line must begin anew";
    }
  }
}

TEST(MessageReader, EndsWhatEndsByItself) {
  Check({
      {"", {}, 0, {}},
      {"me", {"me"}, 0, {}},
      {"youme", {"you", "me"}, 0, {}},
      {"15236", {"15236"}, 0, {}},
      {"1newc1clear", {"1newc", "1clear"}, 0, {}},
      {"1newme1new15236", {"1new", "me", "1new", "15236"}, 0, {}},
      {"44030412616777215", {"44030", "412616777215"}, 0, {}},
      {"30373839", {"30", "37", "38", "39"}, 0, {}},
      {"310363360359me", {"310", "363", "360", "359", "me"}, 0, {}},
      {"36415236", {"36"}, 20, {"415236"}},
      {"36me35you31\xFF", {"36", "me", "35", "you", "31"}, 20, {}},
  });
}

TEST(MessageReader, WaitsForTheRestAndDropsWhatIsTooShort) {
  Check({
      {"m", {}, 250, {}},
      {"y", {}, 250, {}},
      {"yo", {}, 250, {"yo"}},
      {"1", {}, 250, {}},
      {"1523", {}, 250, {}},
      {"1ne", {}, 250, {}},
      {"1cle", {}, 250, {}},
      {"1clea", {}, 250, {"1clea"}},
      {"1_", {}, 250, {}},
      {"1__", {}, 250, {}},
      {kBoard.substr(0, 66), {}, 250, {}},
      {"3", {}, 250, {}},
      {"4", {}, 250, {}},
      {"4126", {}, 250, {}},
      {"41261", {}, 250, {"41261"}},
      {"41261677721", {}, 250, {"41261677721"}},
      {"me152", {"me"}, 250, {}},
  });
}

TEST(MessageReader, RunsToTheEndWithWhatDoesNotEnd) {
  Check({
      {"0", {}, 20, {}},
      {"0checkme", {}, 20, {"0checkme"}},
      {"0e4 15236 you", {}, 20, {"0e4 15236 you"}},
      {std::string("0a\0b\n", 5), {}, 20, {std::string("0a\0b\n", 5)}},
      {"2", {}, 20, {"2"}},
      {"2Ada15236", {}, 20, {"2Ada15236"}},
      {"1new", {}, 20, {"1new"}},
      {"31", {}, 20, {"31"}},
      {"36", {}, 20, {"36"}},
      {"1abcd15236", {}, 20, {"1abcd15236"}},
      {"1_abc", {}, 20, {"1_abc"}},
      {"152x6", {}, 20, {"152x6"}},
      {"1nexc", {}, 20, {"1nexc"}},
      {"3x", {}, 20, {"3x"}},
      {"4ab60", {}, 20, {"4ab60"}},
      {"412699", {}, 20, {"412699"}},
      {"412x0", {}, 20, {"412x0"}},
      {"412616777216", {}, 20, {"412616777216"}},
      {"mx", {}, 20, {"mx"}},
      {"yoyou", {}, 20, {"yoyou"}},
      {"hello15236", {}, 20, {"hello15236"}},
      {"x", {}, 20, {}},
      {"515236", {}, 20, {}},
      {"me9you", {"me"}, 20, {}},
      {"2" + std::string(511, 'n'), {}, 20, {"2" + std::string(511, 'n')}},
      {"2" + std::string(512, 'n'), {}, 250, {"2" + std::string(512, 'n')}},
      {"7" + std::string(511, '1'), {}, 20, {}},
      {"7" + std::string(512, '1'), {}, 250, {}},
  });
}

TEST(MessageReader, LetsABoardHaveALongerLine) {
  const std::string any = "1__" +
                          std::string(
                              "\0\xFF"
                              "15236me",
                              9) +
                          std::string(55, '1');
  Check({
      {kBoard, {kBoard}, 20, {}},
      {any + "me", {any, "me"}, 0, {}},
      {kBoard + "15236", {kBoard, "15236"}, 0, {}},
      {kBoard + kBoard + "you", {kBoard, kBoard, "you"}, 0, {}},
      {kBoard + "0hello", {kBoard}, 20, {"0hello"}},
      {kBoard + "ppp15236me", {kBoard}, 20, {}},
      {kBoard + "mp15236", {kBoard}, 20, {}},
      {kBoard + "m", {kBoard}, 250, {}},
      {kBoard + "yo", {kBoard}, 250, {}},
      {kBoard + "meyo", {kBoard, "me"}, 250, {"yo"}},
      {kBoard + std::string(513, 'p'), {kBoard}, 250, {}},
  });
}

TEST(MessageReader, FindsTheSameTenMessagesInEveryCut) {
  const Messages expected = {"15236", "11228", "16245", "10118", "me", "36", "412616777215", "44030", "you", "15533"};
  std::string bytes;
  for (const std::string& message : expected) bytes += message;
  for (std::size_t first = 0; first <= bytes.size(); ++first) {
    for (std::size_t second = first; second <= bytes.size(); ++second) {
      MessageReader reader;
      reader.Bytes(bytes.substr(0, first));
      reader.Bytes(bytes.substr(first, second - first));
      reader.Bytes(bytes.substr(second));
      ASSERT_EQ(Drain(reader), expected) << "cut at " << first << " and " << second;
    }
  }
  MessageReader reader;
  for (const char c : bytes) reader.Bytes(std::string(1, c));
  EXPECT_EQ(Drain(reader), expected);
}

TEST(MessageReader, FindsRandomMessagesInRandomCuts) {
  for (unsigned seed = 1; seed <= 3000; ++seed) {
    std::mt19937 random(seed);
    const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    const auto two = [&below] { return std::to_string(below(64) + 100).substr(1); };
    Messages expected;
    for (int left = 30; left > 0; --left) {
      const Messages choices = {"me",
                                "you",
                                "1newc",
                                "1clear",
                                kBoard,
                                "1" + two() + two(),
                                "3" + std::to_string(below(64)),
                                "4" + two() + std::to_string(below(10)) + (below(2) ? "0" : "16777215")};
      expected.push_back(choices[static_cast<std::size_t>(below(8))]);
      // A trash of one digit ends only before what is no digit.
      if (expected.back().size() == 2 && expected.back() != "me") expected.push_back("me");
    }
    std::string bytes;
    for (const std::string& message : expected) bytes += message;
    MessageReader reader;
    Messages found;
    for (std::size_t at = 0; at < bytes.size();) {
      const std::size_t piece = static_cast<std::size_t>(below(below(4) ? 8 : 100));
      reader.Bytes(std::string_view(bytes).substr(at, piece));
      at += piece;
      for (std::string& message : Drain(reader)) found.push_back(std::move(message));
    }
    ASSERT_EQ(found, expected) << "seed " << seed;
    ASSERT_EQ(reader.Held(), 0u) << "seed " << seed;
  }
}

TEST(MessageReader, KeepsALongChatLineWhole) {
  std::string line = "0";
  while (line.size() < 40000) line += "15236me 364";
  MessageReader reader;
  for (std::size_t at = 0; at < line.size(); at += 37) reader.Bytes(std::string_view(line).substr(at, 37));
  EXPECT_EQ(reader.QuietNeeded(), 250);
  EXPECT_EQ(Drain(reader), Messages{});
  reader.Quiet();
  EXPECT_EQ(Drain(reader), Messages{line});
}

TEST(MessageReader, DropsAGiantLineToItsEnd) {
  const std::string most = "0" + std::string(MessageReader::kMaxMessage - 1, '1');
  MessageReader reader;
  reader.Bytes(most);
  EXPECT_EQ(reader.Held(), MessageReader::kMaxMessage);
  reader.Quiet();
  EXPECT_EQ(Drain(reader), Messages{most});

  reader.Bytes("me" + most);
  reader.Bytes("1");
  EXPECT_EQ(reader.Held(), 0u);
  reader.Bytes("15236");
  EXPECT_EQ(reader.QuietNeeded(), 250);
  reader.Quiet();
  reader.Bytes("you");
  EXPECT_EQ(Drain(reader), (Messages{"me", "you"}));
}

TEST(MessageReader, QuietLosesNoMessageNobodyHasTakenYet) {
  MessageReader reader;
  reader.Bytes("me0hello");
  reader.Quiet();
  reader.Bytes("15236");
  reader.Quiet();
  EXPECT_EQ(Drain(reader), (Messages{"me", "0hello", "15236"}));
}

}  // namespace
}  // namespace morva
