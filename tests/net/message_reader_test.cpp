#include "net/message_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morva {
namespace {

using Messages = std::vector<std::string>;
using Arrivals = std::vector<std::pair<int, std::string>>;  // ms of quiet, and what comes then

Messages Read(const Arrivals& arrivals, bool byte_by_byte) {
  MessageReader reader;
  Messages messages;
  int now = 0;
  const auto drain = [&] {
    while (auto message = reader.Next(now)) messages.push_back(std::move(*message));
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
  const std::pair<Arrivals, Messages> rows[] = {
      // A trash of one digit or of two.
      {{{0, "3515236"}}, {"35", "15236"}},
      {{{0, "3637"}}, {"36", "37"}},
      {{{0, "31115236"}}, {"311", "15236"}},
      {{{0, "36315236"}}, {"363", "15236"}},
      {{{0, "3111523610203"}}, {"311", "15236", "10203"}},
      {{{0, "310hi"}}, {"31", "0hi"}},
      {{{0, "3122Bob"}}, {"312", "2Bob"}},
      {{{0, "350me"}}, {"350", "me"}},
      {{{0, "3501528"}}, {"35", "01528"}},
      {{{0, "35"}, {20, "15236"}}, {"35", "15236"}},
      {{{0, "351"}, {20, "5236"}}, {"351"}},
      {{{0, "36415236"}}, {"36", "415236"}},
      {{{0, "352me364me"}}, {"352", "me", "36", "4me"}},
      // The rest of a board line, or messages.
      {{{0, board + "15236me"}}, {board, "15236", "me"}},
      {{{0, board + "mepp15236"}}, {board}},
      {{{0, board + "ppp"}, {20, "15236"}}, {board, "15236"}},
      {{{0, board + std::string(600, 'p')}, {300, "15236"}}, {board, "15236"}},
      {{{0, board + board + "0hello"}}, {board, board, "0hello"}},
      // Two words that begin alike, and two colours.
      {{{0, "1newc1new1clear1new"}, {20, "c"}}, {"1newc", "1new", "1clear", "1new"}},
      {{{0, "44030412616777215you"}}, {"44030", "412616777215", "you"}},
      // Lines.
      {{{0, "0e4 15236 you"}, {19, "me"}, {20, "15236"}}, {"0e4 15236 youme", "15236"}},
      {{{0, line}, {300, "yy15236"}, {300, "zz"}, {700, "0hi"}}, {line + "yy15236zz", "0hi"}},
      {{{0, line}, {300, "15236me"}}, {line, "15236", "me"}},
      {{{0, line}, {300, "15236"}, {100, "me, too"}}, {line, "15236", "me", ", too"}},
      {{{0, line}, {300, "0hi"}}, {line + "0hi"}},
      {{{0, "0" + most.substr(1)}, {0, "1"}, {250, "15236"}, {600, "you"}}, {"you"}},
      // What breaks off is waited for, and dropped when nothing comes.
      {{{0, "152"}, {249, "36me1"}, {250, "y"}, {249, "ou"}}, {"15236", "me", "you"}},
      {{{0, "4126167772"}, {249, "15"}, {0, "1__" + board.substr(0, 60)}, {250, "me"}}, {"412616777215", "me"}},
      // Senseless ones go to whoever can judge them.
      {{{0, "yoyou"}, {20, "152x6me"}, {20, "515236"}, {20, "2"}, {20, "0"}}, {"yoyou", "152x6me", "2"}},
  };
  for (const auto& [arrivals, messages] : rows) {
    for (const bool byte_by_byte : {false, true}) {
      EXPECT_EQ(Read(arrivals, byte_by_byte), messages) << arrivals[0].second.substr(0, 80) << ", " << byte_by_byte;
    }
  }
}

}  // namespace
}  // namespace morva
