#include <algorithm>
#include <set>

#include "tests/game.h"

namespace morva {
namespace {

/// Nobody sits on the other side: messages are handed over past the wire.
class Dispatch : public GameTest {
 protected:
  void SetUp() override {
    Go("guest");
    frmChess->Show();
    frmChess->mnuPlaySounds.Checked = false;
    frmChess->Nick = "Ann";
    Tell("2Bob");
  }
};

TEST_F(Dispatch, ActionsChangeTheBoardAndTellTheHistory) {
  const std::pair<std::string, std::string> actions[] = {
      {"15236", "Bob: E7 - E5 (white pawn) #1523631"},
      {"11220", "Bob: E2 - E3 (black pawn) #1122021"},
      {"13333", ""},  // the player passes
      {"15008", "Bob: C7 - A2 (white pawn) #1500831"},
      {"10800", "Bob: A2 - A1 (white pawn) #1080031"},
      {"44030", "Bob: A6 (nothing to black bishop) #2004023"},
      {"440616777215", "Bob: A6 (black bishop to white queen) #2034036"},
      {"440016777215", "Bob: A6 (white queen to white ) #2164030"},
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
  EXPECT_EQ(Board(), "thgjigh..eee.eee....e...............o...........oo.o.oooprqtsqr.");
}

TEST_F(Dispatch, WholeBoardsResetWhatTheyShould) {
  const std::string line = "defghijkl" + std::string(46, 'n') + "nopqrstuv";
  const std::string shown = ".efghijkl" + std::string(47, '.') + "opqrstuv";
  const struct {
    std::string message, board;
    bool game;  // a new one: history and clock begin again
  } cases[] = {{"1newc", kCheckersStart, true},
               {"1new", kStart, true},
               {"1__" + line + "and more", shown, false},
               {"1clear", std::string(64, '.'), false}};
  frmChess->squ(30).ForeColor = kBlack;
  for (const auto& expected : cases) {
    Tell("310");
    frmChess->clock = {5, 5, 5};
    Tell(expected.message);
    EXPECT_EQ(Board(), expected.board) << expected.message;
    EXPECT_EQ(Turn(), "you") << expected.message;
    EXPECT_EQ(History().empty(), expected.game) << expected.message;
    EXPECT_EQ(frmChess->clock.Text(), expected.game ? "00:00:00" : "05:05:05") << expected.message;
    EXPECT_EQ(frmChess->squ(30).ForeColor, kBlack) << expected.message;  // of an empty square: it stays
  }
  EXPECT_EQ(frmChess->BoardLine(), std::string(64, 'd'));
}

TEST_F(Dispatch, WordsSetTheTurnAndNicksTheLabels) {
  for (const auto& [word, turn] : {std::pair{"me", "you"}, {"me", "you"}, {"you", "me"}, {"meme", "me"}}) {
    Tell(word);
    EXPECT_EQ(Turn(), turn);
  }
  for (const auto& [bytes, nick] : {std::pair<std::string, std::string>{"2<b>B&b</b>: (1)", "<b>B&b</b>: (1)"},
                                    {"2J\xFCrgen", "J\xC3\xBCrgen"},
                                    {"2a\n\x01", "a\xEF\xBF\xBD\xEF\xBF\xBD"},
                                    {"2", ""}}) {
    Tell(bytes);
    EXPECT_TRUE(frmChess->OpNick == nick && frmToolWindow->lblOpNick.Caption() == nick) << bytes;
  }
  for (Label* label : {&frmToolWindow->lblNick, &frmToolWindow->lbl3D(0), &frmToolWindow->lbl3D(1)}) {
    EXPECT_EQ(label->Caption(), "Ann");
  }
}

TEST_F(Dispatch, CannedWordsOpenABoxAndEverythingElseIsChat) {
  BoxUser user;
  Tell("2<i>Bob</i> & [*]");
  // The same box is not put over itself.
  for (const char* word : {"0yours", "0check", "0check", "0cmate", "0smate", "0iwin"}) Tell(word);
  Tell("2" + std::string(100000, 'W'));
  Tell("0iwin");
  EXPECT_TRUE(Await([&] { return user.boxes.size() == 6; }));
  const Lines boxes = {"Message|<i>Bob</i> & [*] wins!|0",
                       "Message|Check!|0",
                       "Message|Checkmate!|0",
                       "Message|Stalemate!|0",
                       "Message|" + std::string(40, 'W') + "… wins!|0",
                       "Message|Wake up!|0"};
  std::sort(user.boxes.begin(), user.boxes.end());
  EXPECT_TRUE(user.boxes == boxes && frmChess->txtOut.Text() == "");
  frmChess->mnuAcceptMessages.Click();
  Tell("2Bob");
  for (const char* chat : {"0iwin", "0Check", "0check ", "0me", "xyz"}) Tell(chat);
  EXPECT_EQ(frmChess->txtOut.Text(), "\r\n<Bob>  Check\r\n<Bob>  check \r\n<Bob>  me\r\n<Bob>  yz");
  frmChess->mnuAcceptMessages.Click();
  // The pile of boxes that nobody answers has an end.
  for (int number = 0; number < 20; ++number) {
    Tell("2" + std::to_string(number));
    Tell("0iwin");
  }
  EXPECT_TRUE(Await([&] { return user.boxes.size() == 6 + 8; }));
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Dispatch, SenselessMessagesDoNoHarm) {
  using Squares = std::set<std::size_t>;
  const auto test = [](const Squares& may_change, const Lines& messages) {
    for (const std::string& message : messages) {
      Tell("1new");
      const std::string before = frmChess->BoardLine();
      Tell(message);
      const std::string after = frmChess->BoardLine();
      for (std::size_t i = 0; i < 64; ++i) {
        EXPECT_TRUE(after[i] == before[i] || may_change.contains(i)) << i << " by " << message;
        EXPECT_TRUE(after[i] >= 'd' && after[i] <= 'w') << i << " by " << message;
      }
      Tell("2Bob");
    }
  };
  const std::string nul(1, '\0'), d64(64, 'd'), control = nul + "\33";
  const Lines nothing = {"1",      "152",          "1523",          "16436",
                         "15264",  "1-136",        "152-1",         "15236junk",
                         "1ab36",  "1\377\37636",  "1NEW",          "1newcomer",
                         "1 new",  "1__",          "2\200\377",     "3",
                         "364",    "399999999999", "3-1",           "3x7",
                         "4",      "4071",         "46410",         "4-110",
                         "4071x",  "407116777216", "4071-16777215", "407199999999999",
                         "515236", "937",          "0\200\377",     "ME",
                         "m",      "\37715236",    "-15236"};
  test({}, nothing);
  test({}, {nul, nul + "15236", "1" + nul + "236", "4071" + nul, "0" + control + "[2J", "2" + nul});
  test({}, {"1__" + d64.substr(1), "1_" + d64, "2" + std::string(100000, 'n')});
  test({7}, {"3 7", "3+7x", "3007", "407 0", "40790", "407x0", "407\3770", "4071 0", "40710x", "4 710"});
  test({0, 2, 5, 6, 40, 52}, {"1 5 2", "1-0-0", "1+5 6", "1523640"});
  Squares all;
  for (std::size_t i = 0; i < 64; ++i) all.insert(i);
  test(all, {"1__" + nul + "\1\177\377czmnw" + d64, "1__" + std::string(64, '\0'), "1__" + std::string(64, '\377')});
  EXPECT_EQ(frmChess->txtOut.Text().find_first_of(control), std::string::npos);
}

}  // namespace
}  // namespace morva
