#include "tests/game.h"

namespace morva {
namespace {

class Change : public GameTest {
 protected:
  void SetUp() override { Sit(); }

  static void Open(int square) {
    QTest::mouseClick(MainWindow(), Qt::RightButton, {}, At(square));
    ASSERT_TRUE(frmChange.Loaded());
    ASSERT_TRUE(QTest::qWaitForWindowActive(frmChange->Native()));
  }
  static void Press(Control& button) { QTest::mouseClick(button.Native(), Qt::LeftButton); }
  static void Key(Qt::Key key) { QTest::keyClick(frmChange->Native()->windowHandle(), key); }

  /// The piece and colour that are selected, and whether there is something to trash: "6 1 trash".
  static std::string Selected() {
    std::string text;
    for (OptionButton& piece : frmChange->rdo) text += piece.Value() ? std::to_string(piece.Index) : "";
    text += " ";
    for (OptionButton& color : frmChange->clr) text += color.Value() ? std::to_string(color.Index) : "";
    return text + (frmChange->cmdTrash.Enabled() ? " trash" : "");
  }

  static void ExpectClosed() {
    EXPECT_FALSE(frmChange.Loaded());
    EXPECT_TRUE(frmChess->Enabled());
    EXPECT_TRUE(QTest::qWaitForWindowActive(frmChess->Native()));
  }
};

TEST_F(Change, OpensOnWhatAPlayerWillWantMost) {
  const std::string chess = "1__fhgjighfeeeeeeee" + std::string(32, 'd') + "ooooooooprqtsqrp";
  const std::string mixed = "1__duvddddo" + std::string(56, 'n');
  const struct {
    std::string board;
    int square;
    const char* selected;
  } cases[] = {{chess, 0, "2 0 trash"},   {chess, 1, "4 0 trash"},  {chess, 2, "3 0 trash"},  {chess, 3, "6 0 trash"},
               {chess, 60, "5 1 trash"},  {chess, 8, "6 0 trash"},  {chess, 48, "6 1 trash"}, {chess, 16, "1 0"},
               {chess, 17, "1 1"},        {mixed, 1, "8 1 trash"},  {mixed, 2, "8 1 trash"},  {mixed, 7, "6 1 trash"},
               {mixed, 0, "7 0"},         {"1clear", 17, " 0"}};
  for (const auto& expected : cases) {
    if (expected.board != "1clear") Tell("1newc");
    Tell(expected.board);
    frmChess->squ(17).ForeColor = expected.board == "1clear" ? kBlack : kWhite;
    frmChess->squ(16).ForeColor = kBlack;
    frmChess->squ(0).ForeColor = kBlack;
    Open(expected.square);
    EXPECT_EQ(Selected(), expected.selected) << expected.board << " " << expected.square;
    EXPECT_FALSE(frmChess->Enabled());
    EXPECT_TRUE(frmToolWindow->Enabled());
    Key(Qt::Key_Escape);
    ExpectClosed();
  }
  EXPECT_EQ(Sent(), "");
  EXPECT_TRUE(History().empty());
}

TEST_F(Change, OkPutsThePieceSendsAndTells) {
  frmToolWindow->highlight("me");
  Open(48);
  Key(Qt::Key_Return);
  ExpectClosed();
  EXPECT_EQ(Board()[48], 't');
  Open(12);
  frmChange->rdo(7).Value = true;
  frmChange->clr(1).Value = true;
  EXPECT_EQ(Selected(), "7 1 trash");
  Press(frmChange->cmdOk);
  ExpectClosed();
  EXPECT_EQ(Board()[12], 'u');
  Open(0);
  Press(frmChange->cmdOk);
  EXPECT_EQ(Sent(), "448616777215412716777215" "40020");
  EXPECT_EQ(History(), (Lines{"Ann: A7 (white pawn to white queen) #2114816",
                              "Ann: E2 (black pawn to white checker) #2011217",
                              "Ann: A1 (black castle to black castle) #2020002"}));
  EXPECT_EQ(Turn(), "me");
  Tell("1clear");
  Open(33);
  Press(frmChange->cmdOk);
  EXPECT_EQ(Sent(), "43300");
  EXPECT_EQ(History().back(), "Ann: B5 (nothing to black ) #2003300");
  EXPECT_EQ(frmChess->who, "Ann");
}

TEST_F(Change, TrashEmptiesTheSquareSendsAndTells) {
  for (const int square : {7, 53}) {
    Open(square);
    Press(frmChange->cmdTrash);
    ExpectClosed();
    EXPECT_EQ(Board()[static_cast<std::size_t>(square)], '.');
    EXPECT_TRUE(frmChess->squ(square).Strokes().empty());
  }
  EXPECT_EQ(frmChess->squ(53).ForeColor, kWhite);
  EXPECT_EQ(Sent(), "37353");
  EXPECT_EQ(History(), (Lines{"Ann: trashed H1 (black castle) #3000702", "Ann: trashed F7 (white pawn) #3005311"}));
}

TEST_F(Change, CancelChangesNothingAndThePeerPlaysOn) {
  Open(52);
  frmChange->rdo(2).Value = true;
  Tell("15236");
  Press(frmChange->cmdCancel);
  ExpectClosed();
  EXPECT_EQ(Sent(), "");
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
    const PictureBox& clicked = game.squ(square);
    const double x = 28 * 15 - 2 * 15, y = x;  // the middle, within the border
    Open(square);
    FrmChange& dialog = *frmChange;
    const double left = std::min(clicked.Left() + game.Left() + x, game.Left() + game.Width() - dialog.Width());
    const double top = std::min(clicked.Top() + game.Top() + y, game.Top() + game.Height() - dialog.Height());
    EXPECT_NEAR(dialog.Left(), left, 30) << square;
    EXPECT_NEAR(dialog.Top(), top, 30) << square;
    EXPECT_LE(dialog.Left() + dialog.Width(), game.Left() + game.Width());
    EXPECT_LE(dialog.Top() + dialog.Height(), game.Top() + game.Height());
    Key(Qt::Key_Escape);
    ExpectClosed();
  }
}

TEST_F(Change, HasNoCloseBox) {
  Open(0);
  frmChange->Native()->close();
  EXPECT_TRUE(frmChange.Loaded() && !frmChess->Enabled());
}

}  // namespace
}  // namespace morva
