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

void Check(const std::string& bytes, const Messages& at_once, int quiet_needed, const Messages& after_quiet) {
  for (const std::size_t piece : {std::max<std::size_t>(1, bytes.size()), std::size_t{1}, std::size_t{3}}) {
    SCOPED_TRACE("\"" + bytes.substr(0, 90) + "\" in pieces of " + std::to_string(piece));
    MessageReader reader;
    for (std::size_t at = 0; at < bytes.size(); at += piece) reader.Bytes(bytes.substr(at, piece));
    EXPECT_EQ(Drain(reader), at_once);
    EXPECT_EQ(reader.QuietNeeded(), quiet_needed);
    reader.Quiet();
    EXPECT_EQ(Drain(reader), after_quiet);
    EXPECT_TRUE(reader.QuietNeeded() == 0 && reader.Held() == 0);
    reader.Bytes("15236");
    EXPECT_EQ(Drain(reader), Messages{"15236"}) << "a quiet line must begin anew";
  }
}

TEST(MessageReader, EndsWhatEndsByItself) {
  const Messages lines[] = {{},
                            {"you", "me"},
                            {"1newc", "me", "1clear", "1new", "15236"},
                            {"44030", "412616777215"},
                            {"30", "37", "38", "39"},
                            {"310", "363", "360", "359", "me"}};
  for (const Messages& messages : lines) {
    std::string bytes;
    for (const std::string& message : messages) bytes += message;
    Check(bytes, messages, 0, {});
  }
  Check("36415236", {"36"}, 20, {"415236"});
  Check("36me35you31\xFF", {"36", "me", "35", "you", "31"}, 20, {});
}

TEST(MessageReader, WaitsForTheRestAndDropsWhatIsTooShort) {
  for (const std::string bytes : {"m", "y", "1", "1523", "1ne", "1cle", "1_", "1__", "3", "4", "4126"}) {
    Check(bytes, {}, 250, {});
  }
  for (const std::string bytes : {"yo", "1clea", "41261", "41261677721"}) Check(bytes, {}, 250, {bytes});
  Check(kBoard.substr(0, 66), {}, 250, {});
  Check("me152", {"me"}, 250, {});
}

TEST(MessageReader, RunsToTheEndWithWhatDoesNotEnd) {
  for (const std::string bytes :
       {"0checkme", "0e4 15236 you", "2", "2Ada15236", "1new", "31", "36", "1abcd15236", "1_abc", "152x6", "1nexc",
        "3x", "4ab60", "412699", "412x0", "412616777216", "mx", "yoyou", "hello15236"}) {
    Check(bytes, {}, 20, {bytes});
  }
  const std::string control("0a\0b\n", 5), most(511, '1');
  Check(control, {}, 20, {control});
  for (const std::string bytes : {"0", "x", "515236", "9you"}) Check("me" + bytes, {"me"}, 20, {});
  // A long one, which may come in many pieces, gets more time.
  Check("2" + most, {}, 20, {"2" + most});
  Check("21" + most, {}, 250, {"21" + most});
  Check("7" + most, {}, 20, {});
  Check("71" + most, {}, 250, {});
}

TEST(MessageReader, LetsABoardHaveALongerLine) {
  const std::string any = std::string(
                              "1__\0\377"
                              "15236me",
                              12) +
                          std::string(55, '1');
  Check(kBoard, {kBoard}, 20, {});
  Check(any + "me" + kBoard + kBoard + "15236", {any, "me", kBoard, kBoard, "15236"}, 0, {});
  Check(kBoard + "0hello", {kBoard}, 20, {"0hello"});
  for (const std::string rest : {"ppp15236me", "mp15236"}) Check(kBoard + rest, {kBoard}, 20, {});
  for (const std::string rest : {"m", "yo"}) Check(kBoard + rest, {kBoard}, 250, {});
  Check(kBoard + std::string(513, 'p'), {kBoard}, 250, {});
  Check(kBoard + "meyo", {kBoard, "me"}, 250, {"yo"});
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

TEST(MessageReader, DropsAGiantLineToItsEnd) {
  const std::string most = "0" + std::string(MessageReader::kMaxMessage - 1, '1');
  MessageReader reader;
  reader.Bytes(most);
  EXPECT_EQ(reader.Held(), MessageReader::kMaxMessage);
  reader.Quiet();
  reader.Bytes("me" + most);
  reader.Bytes("1");
  EXPECT_EQ(reader.Held(), 0u);
  reader.Bytes("15236");
  EXPECT_EQ(reader.QuietNeeded(), 250);
  reader.Quiet();
  reader.Bytes("you");
  EXPECT_EQ(Drain(reader), (Messages{most, "me", "you"})) << "those that nobody has taken yet stay";
}

}  // namespace
}  // namespace morva
