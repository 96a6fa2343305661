#include <algorithm>
#include <sstream>

#include "tests/game.h"

namespace morva {
namespace {

class Dispatch : public GameTest {
 protected:
  void SetUp() override { Sit(); }
};

TEST_F(Dispatch, ActionsChangeTheBoardAndTellTheHistory) {
  const std::pair<std::string, std::string> actions[] = {
      {"15236", "Bob: E7 - E5 (white pawn) #1523631"},
      {"11220", "Bob: E2 - E3 (black pawn) #1122021"},
      {"13333", ""},  // the player passes
      {"15008", "Bob: C7 - A2 (white pawn) #1500831"},
      {"10800", "Bob: A2 - A1 (white pawn) #1080031"},
      {"10000", ""},
      {"44030", "Bob: A6 (nothing to black bishop) #2004023"},
      {"440616777215", "Bob: A6 (black bishop to white queen) #2034036"},
      {"440816777215", "Bob: A6 (white queen to white king checker) #2164038"},
      {"440016777215", "Bob: A6 (white king checker to white ) #2184030"},
      {"340", "Bob: trashed A6 (nothing) #3004030"},
      {"37", "Bob: trashed H1 (black castle) #3000722"},
      {"363", "Bob: trashed H8 (white castle) #3006332"}};
  Lines history;
  for (const auto& [message, line] : actions) {
    frmToolWindow->highlight("you");
    frmChess->who = "Ann";
    Tell(message);
    if (!line.empty()) history.push_back(line);
    EXPECT_EQ(History(), history);
    EXPECT_EQ(Turn(), message[0] == '1' ? "me" : "you") << message;
  }
  EXPECT_EQ(Board(), ".hgjigh..eee.eee....e...............o...........oo.o.oooprqtsqr.");
}

TEST_F(Dispatch, MovesConvertOnTheFarRowAndNowhereElse) {
  // The piece, from where it goes, where to, and what it is there.
  for (const std::string move : {"o0107t", "e4856j", "u1407v", "k4956l", "o1708o", "e4655e", "u1708u", "k4655k",
                                 "e0800e", "o5563o", "k0900k", "u5463u", "t0800t", "l5463l", "p5600p"}) {
    const auto from = std::stoul(move.substr(1, 2)), too = std::stoul(move.substr(3, 2));
    std::string board(64, 'd');
    board[from] = move[0];
    Tell("1clear");
    Tell("1__" + board);
    Tell("1" + move.substr(1, 4));
    board[from] = move[0] < 'n' ? 'd' : 'n';  // the colour stays behind
    board[too] = move[5];
    EXPECT_EQ(frmChess->BoardLine(), board) << move;
    EXPECT_EQ(Board().find('?'), std::string::npos);
  }
}

TEST_F(Dispatch, WholeBoardsResetWhatTheyShould) {
  // No piece has one of the letters from c to \xFF; what stood there stays to be seen.
  const std::string letters = "opqrstuv" + std::string(46, 'n') + "ldcmwx\x7F\xFFgd";
  const struct {
    std::string message, board;
    bool game;  // a new one: history and clock begin again
  } cases[] = {
      {"1newc", "dkdkdkdkkdkdkdkddkdkdkdkndndndnddndndndnududududnunununuunununun", true},
      // The squares of the third row keep the colour of the black checkers, those of the sixth that of the white.
      {"1new", "fhgjighfeeeeeeeeddddddddndndndnddndndndnndndndndooooooooprqtsqrp", true},
      {"1__" + letters + "and more", "opqrstuvddddddddddddddddndndndnddndndndnndndndndnnnnnnlnnwwnnngn", false},
      {"1clear", std::string(64, 'd'), false}};
  for (const auto& expected : cases) {
    Tell("310");
    frmChess->clock = {5, 5, 5};
    Tell(expected.message);
    EXPECT_EQ(frmChess->BoardLine(), expected.board) << expected.message;
    EXPECT_EQ(Board().find('?'), std::string::npos) << expected.message;
    EXPECT_EQ(Turn(), "you") << expected.message;
    EXPECT_EQ(History().empty(), expected.game) << expected.message;
    EXPECT_EQ(frmChess->clock.Text(), expected.game ? "00:00:00" : "05:05:05") << expected.message;
  }
}

TEST_F(Dispatch, NicksGoToTheLabels) {
  for (const auto& [bytes, nick] :
       {std::pair{"2<b>B&b</b>: (1)", "<b>B&b</b>: (1)"}, {"2J\xFC\n", "Jü\uFFFD"}, {"2", ""}}) {
    Tell(bytes);
    EXPECT_TRUE(frmChess->OpNick == nick && frmToolWindow->lblOpNick.Caption() == nick) << bytes;
  }
}

TEST_F(Dispatch, CannedWordsOpenABoxAndEverythingElseIsChat) {
  BoxUser user;
  Tell("2<i>Bob</i> & [*]");
  // The same box is not put over itself.
  for (const char* word : {"0yours", "0check", "0check", "0cmate", "0smate", "0iwin"}) Tell(word);
  Tell("2" + std::string(100000, 'W'));
  Tell("0iwin");
  Lines expected;
  for (const std::string text : {"<i>Bob</i> & [*] wins!", "Check!", "Checkmate!", "Stalemate!", "Wake up!"}) {
    expected.push_back("Message|" + text + "|0");
  }
  expected.insert(expected.end() - 1, "Message|" + std::string(40, 'W') + "… wins!|0");
  EXPECT_TRUE(Await([&] { return user.boxes.size() == expected.size(); }));
  std::sort(user.boxes.begin(), user.boxes.end());
  EXPECT_EQ(user.boxes, expected);
  frmChess->mnuAcceptMessages.Click();
  Tell("2Bob");
  for (const char* chat : {"0iwin", "0Check", "0check ", "0me", "xyz"}) Tell(chat);
  EXPECT_EQ(frmChess->txtOut.Text(), "\r\n<Bob>  Check\r\n<Bob>  check \r\n<Bob>  me\r\n<Bob>  yz");
  frmChess->mnuAcceptMessages.Click();
  // The pile of boxes that nobody answers has an end.
  user.boxes.clear();
  for (int number = 0; number < 20; ++number) {
    Tell("2" + std::to_string(number));
    Tell("0iwin");
  }
  EXPECT_TRUE(Await([&] { return user.boxes.size() == 8 && Box() == nullptr; }));
}

TEST_F(Dispatch, SenselessMessagesDoNoHarm) {
  std::istringstream nothing(
      "1 152 16436 15264 1-136 152-1 1ab36 1NEW 1newcomer 15236junk 3 364 399999999999 3-1 3x7 4 4071 46410 4-110 "
      "4071x 407116777216 4071-16777215 515236 937 ME \37715236 1\1236 0\1\33[2J 1__short 1_" +
      kStart);
  for (std::string message; nothing >> message;) {
    Tell("1new");
    const std::string before = frmChess->BoardLine();
    Tell(message);
    EXPECT_EQ(frmChess->BoardLine(), before) << message;
    EXPECT_TRUE(History().empty()) << message;
  }
  EXPECT_EQ(frmChess->txtOut.Text().find_first_of("\1\33"), std::string::npos);
  // A number is what a text starts with.
  for (const char* message : {"3 7", "3+7x", "3007", "40700x", "407 0", "407\3770"}) {
    Tell("1new");
    Tell(message);
    EXPECT_EQ(Board(), kStart.substr(0, 7) + '.' + kStart.substr(8)) << message;
  }
}

}  // namespace
}  // namespace morva
