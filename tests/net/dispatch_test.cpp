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
  const struct {
    std::string message;
    std::vector<std::pair<int, char>> changed;
    const char* line;
  } cases[] = {{"15236", {{52, '.'}, {36, 'o'}}, "Bob: E7 - E5 (white pawn) #1523631"},
               {"11220", {{12, '.'}, {20, 'e'}}, "Bob: E2 - E3 (black pawn) #1122021"},
               {"13333", {}, nullptr},  // the player passes
               {"15008", {{50, '.'}, {8, 'o'}}, "Bob: C7 - A2 (white pawn) #1500831"},
               {"10800", {{8, '.'}, {0, 't'}}, "Bob: A2 - A1 (white pawn) #1080031"},
               {"44030", {{40, 'g'}}, "Bob: A6 (nothing to black bishop) #2004023"},
               {"440616777215", {{40, 't'}}, "Bob: A6 (black bishop to white queen) #2034036"},
               {"440016777215", {{40, '.'}}, "Bob: A6 (white queen to white ) #2164030"},
               {"340", {}, "Bob: trashed A6 (nothing) #3004030"},
               {"37", {{7, '.'}}, "Bob: trashed H1 (black castle) #3000722"},
               {"363", {{63, '.'}}, "Bob: trashed H8 (white castle) #3006332"}};
  std::string board = kStart;
  Lines history;
  for (const auto& expected : cases) {
    frmToolWindow->highlight("you");
    Tell(expected.message);
    for (const auto& [square, piece] : expected.changed) {
      board[static_cast<std::size_t>(square)] = piece;
      EXPECT_EQ(frmChess->squ(square).Strokes().empty(), piece == '.') << expected.message;
    }
    if (expected.line != nullptr) history.push_back(expected.line);
    EXPECT_EQ(Board(), board) << expected.message;
    EXPECT_EQ(History(), history);
    EXPECT_EQ(Turn(), expected.message[0] == '1' ? "me" : "you") << expected.message;
  }
  EXPECT_TRUE(frmChess->i1 == 8 && frmChess->i2 == 0 && frmChess->who == "Bob");
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
    frmChess->sec = frmChess->min = frmChess->hour = 5;
    Tell(expected.message);
    EXPECT_EQ(Board(), expected.board) << expected.message;
    EXPECT_EQ(Turn(), "you") << expected.message;
    EXPECT_EQ(History().empty(), expected.game) << expected.message;
    EXPECT_EQ(frmChess->sec + frmChess->min + frmChess->hour, expected.game ? 0 : 15) << expected.message;
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
  // Play goes on behind a box, and the same box is not put over itself.
  bool played = false;
  BoxUser user(QMessageBox::Ok, [&played] {
    if (std::exchange(played, true)) return;
    Tell("0check");
    Tell("15236");
  });
  Tell("0check");
  EXPECT_EQ(Board()[36], 'o');
  for (const char* word : {"0yours", "0cmate", "0smate", "2<i>Bob</i> & [*]", "0iwin"}) Tell(word);
  EXPECT_EQ(user.boxes, (Lines{"Message|Check!|0", "Message|Wake up!|0", "Message|Checkmate!|0", "Message|Stalemate!|0",
                               "Message|<i>Bob</i> & [*] wins!|0"}));
  EXPECT_EQ(frmChess->txtOut.Text(), "");

  // Nobody answers these, and there is an end to the pile.
  qsizetype most = 0;
  std::function<void(int)> pile = [&](int number) {
    if (number > 20) {
      for (QWidget* window : QApplication::topLevelWidgets()) {
        most += window->inherits("QMessageBox");
        if (auto* box = qobject_cast<QMessageBox*>(window)) box->done(QMessageBox::Ok);
      }
      return;
    }
    QTimer::singleShot(0, frmChess->Native(), [&pile, number] { pile(number + 1); });
    Tell("2" + std::to_string(number));
    Tell("0iwin");
  };
  user.Rest();
  pile(1);
  EXPECT_EQ(most, 8);

  frmChess->mnuAcceptMessages.Checked = false;
  Tell("2Bob");
  for (const char* chat : {"0iwin", "0Check", "0check ", "0me", "xyz"}) Tell(chat);
  EXPECT_EQ(user.boxes.size(), 5U);
  EXPECT_EQ(frmChess->txtOut.Text(), "\r\n<Bob>  Check\r\n<Bob>  check \r\n<Bob>  me\r\n<Bob>  yz");
}

TEST_F(Dispatch, SenselessMessagesDoNoHarm) {
  const std::string nul(1, '\0');
  const std::string odd_board = "1__" + std::string("\0\1\177\377czmnw", 9) + std::string(55, 'd');
  // The squares that the messages may change; -1 is any.
  const std::pair<std::set<int>, Lines> cases[] = {
      {{},
       {"1",
        "152",
        "1523",
        "16436",
        "15264",
        "1-136",
        "152-1",
        "15236junk",
        "1ab36",
        "1" + nul + "236",
        "1\377\37636",
        "1NEW",
        "1newcomer",
        "1 new",
        "1__",
        "1__" + std::string(63, 'd'),
        "1_" + std::string(64, 'd'),
        "2" + nul,
        "2\200\377",
        "2" + std::string(100000, 'n'),
        "3",
        "364",
        "399999999999",
        "3-1",
        "3x7",
        "4",
        "4071",
        "46410",
        "4-110",
        "4071x",
        "407116777216",
        "4071-16777215",
        "407199999999999",
        "4071" + nul,
        "515236",
        "937",
        "0" + nul + "\33[2J",
        "0\200\377",
        "ME",
        "m",
        nul,
        nul + "15236",
        "\37715236",
        "-15236"}},
      {{7}, {"3 7", "3+7x", "3007", "407 0", "40790", "407x0", "407\3770", "4071 0", "40710x", "4 710"}},
      {{0, 2, 5, 6, 40, 52}, {"1 5 2", "1-0-0", "1+5 6", "1523640"}},
      {{-1}, {odd_board, "1__" + std::string(64, '\0'), "1__" + std::string(64, '\377')}}};
  const auto squares = [] {
    Lines all;
    for (const PictureBox& square : frmChess->squ) all.push_back(square.Tag + " " + std::to_string(square.ForeColor));
    return all;
  };
  const std::string control("\0\n\33\1\177", 5);
  for (const auto& [may_change, messages] : cases) {
    for (const std::string& message : messages) {
      Tell("1new");
      const Lines before = squares();
      Tell(message);
      const Lines after = squares();
      for (std::size_t i = 0; i < 64; ++i) {
        const bool may = may_change.contains(-1) || may_change.contains(static_cast<int>(i));
        EXPECT_TRUE(LeadingNumber(after[i]) && (may || after[i] == before[i])) << i << " by " << message;
      }
      const std::string line = frmChess->BoardLine();
      EXPECT_TRUE(std::all_of(line.begin(), line.end(), [](char c) { return c >= 'd' && c <= 'w'; })) << message;
      for (const std::string& text : History()) EXPECT_EQ(text.find_first_of(control), text.npos);
      Tell("2Bob");
    }
  }
  EXPECT_EQ(frmChess->txtOut.Text().find_first_of(std::string("\0\33", 2)), std::string::npos);
}

}  // namespace
}  // namespace morva
