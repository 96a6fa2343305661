#include <algorithm>
#include <set>

#include "tests/game.h"

namespace morva {
namespace {

/// A table that nobody sits at on the other side: messages are handed over past the wire.
class Dispatch : public GameTest {
 protected:
  void SetUp() override {
    GoAsGuest();
    frmChess->Show();
    frmChess->mnuPlaySounds.Checked = false;
    frmChess->Nick = "Ann";
    Tell("2Bob");
  }

  static std::string With(std::string board, std::initializer_list<std::pair<int, char>> squares) {
    for (const auto& [square, letter] : squares) board[static_cast<std::size_t>(square)] = letter;
    return board;
  }
};

TEST_F(Dispatch, AMoveCarriesThePieceAndGivesTheTurn) {
  Tell("15236");
  EXPECT_EQ(Board(), With(kStart, {{52, '.'}, {36, 'o'}}));
  EXPECT_EQ(History(), Lines{"Bob: E7 - E5 (white pawn) #1523631"});
  EXPECT_EQ(Turn(), "me");
  EXPECT_TRUE(frmChess->i1 == 52 && frmChess->i2 == 36 && frmChess->who == "Bob");
  frmToolWindow->highlight("you");
  Tell("13640");
  EXPECT_EQ(Turn(), "me");
  Tell("11220");
  EXPECT_EQ(History().back(), "Bob: E2 - E3 (black pawn) #1122021");
  const std::string before = Board();
  Tell("13333");  // the player passes
  EXPECT_EQ(Board(), before);
  EXPECT_EQ(History().size(), 3U);
  EXPECT_TRUE(frmChess->i1 == 33 && frmChess->i2 == 33);
}

TEST_F(Dispatch, ConvertsOnTheFarRowAlone) {
  const struct {
    const char* messages[2];
    int square;
    char piece;
    const char* line;
  } cases[] = {{{"403116777215", "10307"}, 7, 't', "Bob: D1 - H1 (white pawn) #1030731"},
               {{"45610", "15663"}, 63, 'j', "Bob: A8 - H8 (black pawn) #1566321"},
               {{"42070", "12056"}, 56, 'l', "Bob: E3 - A8 (black checker) #1205627"},
               {{"420716777215", "12000"}, 0, 'v', "Bob: E3 - A1 (white checker) #1200037"},
               {{"420716777215", "12062"}, 62, 'u', "Bob: E3 - G8 (white checker) #1206237"},
               {{"420616777215", "12001"}, 1, 't', "Bob: E3 - B1 (white queen) #1200136"}};
  for (const auto& expected : cases) {
    for (const char* message : expected.messages) Tell(message);
    EXPECT_EQ(Board()[static_cast<std::size_t>(expected.square)], expected.piece) << expected.messages[0];
    EXPECT_EQ(History().back(), expected.line);
  }
}

TEST_F(Dispatch, ChangesAndTrashes) {
  frmToolWindow->highlight("you");
  const struct {
    const char* message;
    int square;
    char piece;
    const char* line;
  } cases[] = {{"44030", 40, 'g', "Bob: A6 (nothing to black bishop) #2004023"},
               {"440616777215", 40, 't', "Bob: A6 (black bishop to white queen) #2034036"},
               {"412616777215", 12, 't', "Bob: E2 (black pawn to white queen) #2011236"},
               {"440016777215", 40, '.', "Bob: A6 (white queen to white ) #2164030"},
               {"340", 40, '.', "Bob: trashed A6 (nothing) #3004030"},
               {"37", 7, '.', "Bob: trashed H1 (black castle) #3000722"},
               {"363", 63, '.', "Bob: trashed H8 (white castle) #3006332"}};
  std::string board = kStart;
  for (const auto& expected : cases) {
    Tell(expected.message);
    board[static_cast<std::size_t>(expected.square)] = expected.piece;
    EXPECT_EQ(Board(), board) << expected.message;
    EXPECT_EQ(History().back(), expected.line);
    EXPECT_EQ(frmChess->squ(expected.square).Strokes().empty(), expected.piece == '.') << expected.message;
  }
  EXPECT_EQ(History().size(), std::size(cases));
  EXPECT_EQ(Turn(), "you");
}

TEST_F(Dispatch, NewGamesEmptyHistoryAndClockAndAClearNeither) {
  const auto disturb = [] {
    Tell("310");
    frmToolWindow->highlight("you");
    frmChess->sec = frmChess->min = frmChess->hour = 5;
  };
  for (const auto& [message, board] : {std::pair<std::string, std::string>{"1newc", kCheckersStart},
                                       {"1new", kStart},
                                       {"1clear", std::string(64, '.')}}) {
    disturb();
    Tell(message);
    EXPECT_EQ(Board(), board) << message;
    EXPECT_EQ(Turn(), "you") << message;
    EXPECT_EQ(History().empty(), message != "1clear");
    EXPECT_EQ(frmChess->sec + frmChess->min + frmChess->hour, message == "1clear" ? 15 : 0) << message;
  }
  EXPECT_EQ(frmChess->BoardLine(), std::string(64, 'd'));
  for (const PictureBox& square : frmChess->squ) EXPECT_TRUE(square.Strokes().empty()) << square.Index;
}

TEST_F(Dispatch, ABoardReplacesTheSquaresAlone) {
  Tell("15220");
  frmChess->sec = 5;
  const std::string line = "defghijkl" + std::string(46, 'n') + "nopqrstuv";
  const std::string old_colours = frmChess->BoardLine();
  Tell("1__" + line + "and more");
  EXPECT_EQ(Board(), With(std::string(64, '.'), {{1, 'e'},
                                                 {2, 'f'},
                                                 {3, 'g'},
                                                 {4, 'h'},
                                                 {5, 'i'},
                                                 {6, 'j'},
                                                 {7, 'k'},
                                                 {8, 'l'},
                                                 {56, 'o'},
                                                 {57, 'p'},
                                                 {58, 'q'},
                                                 {59, 'r'},
                                                 {60, 's'},
                                                 {61, 't'},
                                                 {62, 'u'},
                                                 {63, 'v'}}));
  // The colour of an empty square is nobody's business.
  EXPECT_EQ(frmChess->squ(16).ForeColor, old_colours[16] < 'n' ? kBlack : kWhite);
  EXPECT_EQ(History().size(), 1U);
  EXPECT_EQ(frmChess->sec, 5);
}

TEST_F(Dispatch, WordsSetTheTurnAndNicksTheLabels) {
  for (int time = 0; time < 2; ++time) {
    Tell("me");
    EXPECT_EQ(Turn(), "you");
  }
  Tell("you");
  EXPECT_EQ(Turn(), "me");
  Tell("meme");
  EXPECT_EQ(Turn(), "me");
  for (const auto& [bytes, nick] : {std::pair<std::string, std::string>{"2<b>B&b</b>: (1)", "<b>B&b</b>: (1)"},
                                    {"2  ", "  "},
                                    {"2J\xFCrgen", "J\xC3\xBCrgen"},
                                    {"2a\nb\x01",
                                     "a\xEF\xBF\xBD"
                                     "b\xEF\xBF\xBD"},
                                    {"2", ""}}) {
    Tell(bytes);
    EXPECT_EQ(frmChess->OpNick, nick);
    EXPECT_EQ(frmToolWindow->lblOpNick.Caption(), nick);
  }
  EXPECT_EQ(frmToolWindow->lblNick.Caption(), "Ann");
  EXPECT_TRUE(frmToolWindow->lbl3D(0).Caption() == "Ann" && frmToolWindow->lbl3D(1).Caption() == "Ann");
}

TEST_F(Dispatch, CannedWordsOpenABoxAndEverythingElseIsChat) {
  BoxUser user;
  for (const char* word : {"0yours", "0check", "0cmate", "0smate", "0iwin"}) Tell(word);
  EXPECT_EQ(user.boxes, (Lines{"Message|Wake up!|0", "Message|Check!|0", "Message|Checkmate!|0", "Message|Stalemate!|0",
                               "Message|Bob wins!|0"}));
  EXPECT_EQ(frmChess->txtOut.Text(), "");
  Tell("2<i>Bob</i> & [*]");
  Tell("0iwin");
  EXPECT_EQ(user.boxes.back(), "Message|<i>Bob</i> & [*] wins!|0");

  frmChess->mnuAcceptMessages.Checked = false;
  Tell("2Bob");
  Tell("0iwin");
  EXPECT_EQ(user.boxes.size(), 6U);
  for (const char* chat : {"0Check", "0check ", "0 yours", "0me", "xyz", "0"}) Tell(chat);
  EXPECT_EQ(frmChess->txtOut.Text(),
            "\r\n<Bob>  Check\r\n<Bob>  check \r\n<Bob>   yours\r\n<Bob>  me\r\n<Bob>  yz\r\n<Bob>  ");
  EXPECT_TRUE(History().empty());
}

TEST_F(Dispatch, PlayGoesOnBehindABoxAndTheSameBoxIsNotStacked) {
  BoxUser user(QMessageBox::Ok, [] {
    Tell("0check");
    Tell("15236");
  });
  Tell("0check");
  EXPECT_EQ(user.boxes.size(), 1U);
  EXPECT_EQ(History().size(), 1U);
}

TEST_F(Dispatch, SenselessMessagesDoNoHarm) {
  const std::string nul(1, '\0');
  const std::string odd_board = "1__" +
                                std::string(
                                    "\0\x01\x7F\xFF"
                                    "czmnw",
                                    9) +
                                std::string(55, 'd');
  const struct {
    std::string message;
    std::set<int> may_change;  // squares; -1 for the whole board
  } cases[] = {
      {"1", {}},
      {"15", {}},
      {"152", {}},
      {"1523", {}},
      {"1 5 2", {2, 5}},
      {"16436", {}},
      {"15264", {}},
      {"19999", {}},
      {"1-136", {}},
      {"152-1", {}},
      {"1-0-0", {0}},
      {"1+5 6", {5, 6}},
      {"1 8 9", {8, 9}},
      {"15236junk", {}},
      {"1523640", {40, 52}},
      {"1ab36", {}},
      {"1" + nul + "236", {}},
      {"1\xFF\xFE"
       "36",
       {}},
      {"1NEW", {}},
      {"1newcomer", {}},
      {"1 new", {}},
      {"1__", {}},
      {"1__" + std::string(63, 'd'), {}},
      {"1_" + std::string(64, 'd'), {}},
      {odd_board, {-1}},
      {"1__" + std::string(64, '\0'), {-1}},
      {"1__" + std::string(64, '\xFF'), {-1}},
      {"2", {}},
      {"2" + nul, {}},
      {"2\x80\xFF", {}},
      {"2" + std::string(100000, 'n'), {}},
      {"3", {}},
      {"364", {}},
      {"399999999999", {}},
      {"3-1", {}},
      {"3- 1", {}},
      {"3 7", {7}},
      {"3+7x", {7}},
      {"3x7", {}},
      {"3" + nul + "7", {}},
      {"3007", {7}},
      {"4", {}},
      {"407", {}},
      {"4071", {}},
      {"46410", {}},
      {"4-110", {}},
      {"4071x", {}},
      {"407116777216", {}},
      {"407116777214", {}},
      {"4071-16777215", {}},
      {"407199999999999", {}},
      {"407 0", {7}},
      {"40790", {7}},
      {"407x0", {7}},
      {"407-0", {7}},
      {"4071 0", {7}},
      {"4071+0", {7}},
      {"40710x", {7}},
      {"4 710", {7}},
      {"4071" + nul, {}},
      {"407\xFF"
       "0",
       {7}},
      {"5", {}},
      {"515236", {}},
      {"937", {}},
      {"0" + nul + "\x1B[2J", {}},
      {"0\x80\xFF", {}},
      {"ME", {}},
      {"m", {}},
      {nul, {}},
      {nul + "15236", {}},
      {"\xFF"
       "15236",
       {}},
      {"-15236", {}},
      {" 15236", {}},
  };
  const auto squares = [] {
    std::vector<std::string> all;
    for (const PictureBox& s : frmChess->squ) all.push_back(s.Tag + " " + std::to_string(s.ForeColor));
    return all;
  };
  for (const auto& bad : cases) {
    Tell("1new");
    const auto before = squares();
    Tell(bad.message);
    const auto after = squares();
    for (int i = 0; i < 64; ++i) {
      const auto at = static_cast<std::size_t>(i);
      if (!bad.may_change.contains(-1) && !bad.may_change.contains(i)) {
        EXPECT_EQ(after[at], before[at]) << i << " by " << bad.message;
      }
      EXPECT_TRUE(LeadingNumber(frmChess->squ(i).Tag)) << bad.message;
    }
    const std::string line = frmChess->BoardLine();
    EXPECT_TRUE(line.size() == 64 && std::all_of(line.begin(), line.end(), [](char c) { return c >= 'd' && c <= 'w'; }))
        << bad.message;
    for (const std::string& text : History()) EXPECT_EQ(text.find_first_of(std::string("\0\n\x1B", 3)), text.npos);
    Tell("2Bob");
  }
  EXPECT_EQ(frmChess->txtOut.Text().find_first_of(std::string("\0\x1B", 2)), std::string::npos);
}

}  // namespace
}  // namespace morva
