#include "tests/game.h"

namespace morva {
namespace {

class Change : public GameTest {
 protected:
  void SetUp() override { Sit(); }

  static void Open(int square) {
    QTest::mouseClick(MainWindow(), Qt::RightButton, {}, At(square));
    ASSERT_TRUE(frmChange.Loaded() && !frmChess->Enabled() && frmToolWindow->Enabled());
    ASSERT_TRUE(QTest::qWaitForWindowActive(frmChange->Native()));
  }
  static void ExpectClosed() {
    EXPECT_TRUE(!frmChange.Loaded() && frmChess->Enabled());
    EXPECT_TRUE(QTest::qWaitForWindowActive(frmChess->Native()));
  }
  static void Press(Control& button) {
    QTest::mouseClick(button.Native(), Qt::LeftButton);
    ExpectClosed();
  }
  static void Press(Qt::Key key) {
    QTest::keyClick(frmChange->Native()->windowHandle(), key);
    ExpectClosed();
  }

  /// The piece and colour that are selected, and whether there is something to trash: "6 1 trash".
  static std::string Selected() {
    std::string text;
    for (OptionButton& piece : frmChange->rdo) text += piece.Value() ? std::to_string(piece.Index) : "";
    for (OptionButton& color : frmChange->clr) text += color.Value() ? " " + std::to_string(color.Index) : "";
    return text + (frmChange->cmdTrash.Enabled() ? " trash" : "");
  }
};

TEST_F(Change, OpensOnWhatAPlayerWillWantMost) {
  const std::string chess = "1__fhgjighfeeeeeeee" + std::string(32, 'd') + "ooooooooprqtsqrp";
  const std::string mixed = "1__duvddddo" + std::string(56, 'n');
  const struct {
    std::string board;
    int square;
    const char* selected;
  } cases[] = {{chess, 0, "2 0 trash"},  {chess, 1, "4 0 trash"}, {chess, 2, "3 0 trash"},  {chess, 3, "6 0 trash"},
               {chess, 60, "5 1 trash"}, {chess, 8, "6 0 trash"}, {chess, 48, "6 1 trash"}, {chess, 16, "1 0"},
               {chess, 17, "1 1"},       {mixed, 1, "8 1 trash"}, {mixed, 2, "8 1 trash"},  {mixed, 7, "6 1 trash"},
               {mixed, 16, "7 0"},       {"1clear", 17, " 0"}};
  for (const auto& expected : cases) {
    Tell(expected.board);
    Open(expected.square);
    EXPECT_EQ(Selected(), expected.selected) << expected.board << " " << expected.square;
    Press(Qt::Key_Escape);
  }
  EXPECT_TRUE(Sent().empty() && History().empty());
}

TEST_F(Change, TheKeysReachEveryPieceAndColour) {
  Open(48);
  std::string walk;
  const auto press = [&](Qt::Key key) {
    QTest::keyClick(frmChange->Native()->windowHandle(), key);
    walk += Selected().substr(0, 3) + ", ";
  };
  for (int stop = 0; stop < 3; ++stop) press(Qt::Key_Tab);  // OK, Cancel, Trash Piece
  for (const Qt::Key key :
       {Qt::Key_Up, Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Tab, Qt::Key_Up}) {
    press(key);
  }
  EXPECT_EQ(walk, "6 1, 6 1, 6 1, 5 1, 6 1, 7 1, 8 1, 1 1, 8 1, 8 1, 8 0, ");
  Press(Qt::Key_Escape);
}

TEST_F(Change, OkPutsThePieceSendsAndTells) {
  Open(48);
  Press(Qt::Key_Return);
  Open(12);
  frmChange->rdo(7).Value = true;
  frmChange->clr(1).Value = true;
  EXPECT_EQ(Selected(), "7 1 trash");
  Press(frmChange->cmdOk);
  Open(6);
  Press(frmChange->cmdOk);
  EXPECT_TRUE(Board()[48] == 't' && Board()[12] == 'u' && Board()[6] == 'h');
  EXPECT_EQ(Sent(),
            "448616777215412716777215"
            "40640");
  EXPECT_EQ(History(),
            (Lines{"Ann: A7 (white pawn to white queen) #2114816", "Ann: E2 (black pawn to white checker) #2011217",
                   "Ann: G1 (black knight to black knight) #2040604"}));
  Tell("1clear");
  Open(33);
  Press(frmChange->cmdOk);
  EXPECT_EQ(Sent(), "43300");
  EXPECT_EQ(History().back(), "Ann: B5 (nothing to black ) #2003300");
  EXPECT_TRUE(frmChess->who == "Ann" && Turn() == "you");
}

TEST_F(Change, TrashEmptiesTheSquareSendsAndTells) {
  for (const int square : {7, 53}) {
    Open(square);
    Press(frmChange->cmdTrash);
    EXPECT_TRUE(frmChess->squ(square).Tag == "0" && frmChess->squ(square).Strokes().empty());
  }
  EXPECT_EQ(frmChess->squ(53).ForeColor, kWhite);
  EXPECT_EQ(Sent(), "37353");
  EXPECT_EQ(History(), (Lines{"Ann: trashed H1 (black castle) #3000702", "Ann: trashed F7 (white pawn) #3005311"}));
}

TEST_F(Change, ThePeerPlaysOnUnderIt) {
  Open(52);
  frmChange->rdo(2).Value = true;
  Tell("15236");
  frmChange->Native()->close();  // it has no close box
  Press(frmChange->cmdCancel);
  EXPECT_EQ(History(), Lines{"Bob: E7 - E5 (white pawn) #1523631"});
  Open(36);
  Tell("13620");
  Press(frmChange->cmdOk);
  EXPECT_TRUE(Board()[36] == 't' && Board()[20] == 'o');
  EXPECT_EQ(History().back(), "Ann: E5 (white pawn to white queen) #2113616");
}

TEST_F(Change, StandsAtThePointerInsideTheMainWindow) {
  FrmChess& game = *frmChess;
  for (const int square : {0, 9, 7, 56, 63}) {
    Open(square);
    FrmChange& dialog = *frmChange;
    const double pointer = 26 * kTwipsPerPixel;  // the middle of a square, inside its border
    const double rightmost = game.Left() + game.Width() - dialog.Width();
    const double lowest = game.Top() + game.Height() - dialog.Height();
    EXPECT_NEAR(dialog.Left(), std::min(game.squ(square).Left() + game.Left() + pointer, rightmost), 30) << square;
    EXPECT_NEAR(dialog.Top(), std::min(game.squ(square).Top() + game.Top() + pointer, lowest), 30) << square;
    EXPECT_TRUE(dialog.Left() <= rightmost && dialog.Top() <= lowest) << square;
    Press(Qt::Key_Escape);
  }
}

}  // namespace
}  // namespace morva
