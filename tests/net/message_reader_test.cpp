#include "net/message_reader.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace morva {
namespace {

using Arrivals = std::vector<std::pair<int, std::string>>;  // ms of quiet, and what comes then

/// The messages that come out, with a bar behind each.
std::string Read(const Arrivals& arrivals, bool byte_by_byte) {
  MessageReader reader;
  std::string messages;
  int now = 0;
  const auto drain = [&] {
    while (auto message = reader.Next(now)) messages += *message + '|';
  };
  for (const auto& [quiet, bytes] : arrivals) {
    now += quiet;
    drain();
    for (std::size_t at = 0; at < bytes.size(); at += byte_by_byte ? 1 : bytes.size()) {
      reader.Bytes(byte_by_byte ? bytes.substr(at, 1) : bytes, now);
    }
  }
  reader.End();
  drain();
  EXPECT_TRUE(reader.Held() == 0 && reader.WaitMs(now) == -1);
  return messages;
}

TEST(MessageReader, DecidesWhereTheGrammarIsOpen) {
  const std::string board = "1__" + std::string(64, 'p'), line = "0" + std::string(600, 'x'), most(1 << 20, '1');
  std::string moves = "0";
  while (moves.size() < 600) moves += "15236";
  // With a bar behind each message, for the eye.
  const std::string at_once =
      "35|15236| 36|37| 311|15236| 363|15236| 311|15236|10203| 31|0hi| 310|0hi| 312|2Bob| 350|me| 35|01528| 36|415236| "
      "352|me|36|4me| 31|315|me| 44030|412616777215|you| " +
      board + "|15236|me| " + board + "|" + board + "|0hello|";
  const std::pair<Arrivals, std::string> arriving[] = {
      // A trash of one digit or of two; the rest of a board line, or messages.
      {{{0, "35"}, {20, "15236"}}, "35|15236|"},
      {{{0, "351"}, {20, "5236"}}, "351|"},
      {{{0, board + "mepp15236"}}, board + "|"},
      {{{0, board + "ppp"}, {20, "15236"}}, board + "|15236|"},
      {{{0, board + std::string(600, 'p')}, {300, "15236"}}, board + "|15236|"},
      // Two words that begin alike.
      {{{0, "1newc1new1clear1new"}, {20, "c"}}, "1newc|1new|1clear|1new|"},
      // Lines.
      {{{0, "0e4 15236 you"}, {19, "me"}, {20, "15236"}}, "0e4 15236 youme|15236|"},
      {{{0, line}, {300, "yy15236"}, {300, "zz"}, {700, "0hi"}}, line + "yy15236zz|0hi|"},
      {{{0, line}, {300, "15236me"}}, line + "|15236|me|"},
      {{{0, line}, {300, "15236"}, {100, "me, too"}}, line + "|15236|me|, too|"},
      {{{0, line}, {300, "0hi"}}, line + "0hi|"},
      {{{0, line}, {300, "15236112281524310118"}}, line + "|15236|11228|15243|10118|"},
      {{{0, moves}, {300, "yy"}}, moves + "yy|"},
      {{{0, "0" + most.substr(1)}, {0, "1"}, {250, "15236"}, {600, "you"}}, "you|"},
      // What breaks off is waited for, and dropped when nothing comes.
      {{{0, "152"}, {249, "36me1"}, {250, "y"}, {249, "ou"}}, "15236|me|you|"},
      {{{0, "4126167772"}, {249, "15"}, {0, "1__" + board.substr(0, 60)}, {250, "me"}}, "412616777215|me|"},
      // Senseless ones go to whoever can judge them.
      {{{0, "yoyou"}, {20, "152x6me"}, {20, "515236"}, {20, "2"}, {20, "0"}}, "yoyou|152x6me|2|"}};
  for (const bool byte_by_byte : {false, true}) {
    std::istringstream rows(at_once);
    for (std::string messages; rows >> messages;) {
      std::string bytes = messages;
      std::erase(bytes, '|');
      EXPECT_EQ(Read({{0, bytes}}, byte_by_byte), messages);
    }
    for (const auto& [arrivals, messages] : arriving) EXPECT_EQ(Read(arrivals, byte_by_byte), messages);
  }
}

}  // namespace
}  // namespace morva
