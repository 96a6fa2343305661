#include "tests/game.h"

namespace morva {
namespace {

class Change : public GameTest {
 protected:
  void SetUp() override { Sit(); }

  static void Open(int square) {
    Click(square, Qt::RightButton);
    ASSERT_TRUE(frmChange.Loaded() && !frmChess->Enabled() && frmToolWindow->Enabled() && HasKeys(*frmChange));
  }
  static void CloseWith(Control& button) {
    QTest::mouseClick(button.Native(), Qt::LeftButton);
    ExpectClosed();
  }
  static void CloseWith(Qt::Key key) {
    QTest::keyClick(frmChange->Native()->windowHandle(), key);
    ExpectClosed();
  }
  static void ExpectClosed() { EXPECT_TRUE(!frmChange.Loaded() && frmChess->Enabled() && HasKeys(*frmChess)); }

  /// The piece and colour that are selected, and whether there is something to trash: "6 1 trash".
  static std::string Selected() {
    std::string text;
    for (OptionButton& piece : frmChange->rdo) text += piece.Value() ? std::to_string(piece.Index) : "";
    for (OptionButton& color : frmChange->clr) text += color.Value() ? " " + std::to_string(color.Index) : "";
    return text + (frmChange->cmdTrash.Enabled() ? " trash" : "");
  }
};

TEST_F(Change, OpensAtThePointerOnWhatAPlayerWillWantMost) {
  const std::string mixed = "1__duvddddo" + std::string(55, 'n') + "r", pawn = "1__" + std::string(63, 'd') + "o";
  const std::tuple<std::string, int, const char*> cases[] = {
      {"1new", 0, "2 0 trash"}, {"1new", 1, "4 0 trash"},  {"1new", 2, "3 0 trash"}, {"1new", 3, "6 0 trash"},
      {"1new", 8, "6 0 trash"}, {"1new", 60, "5 1 trash"}, {"1new", 16, "1 0"},      {"1new", 48, "6 1 trash"},
      {mixed, 0, "7 0"},        {mixed, 1, "8 1 trash"},   {mixed, 2, "8 1 trash"},  {mixed, 17, "7 1"},
      {mixed, 7, "6 1 trash"},  {mixed, 63, "4 1 trash"},  {pawn, 0, "1 0"},         {"1clear", 17, " 0"}};
  FrmChess& game = *frmChess;
  for (const auto& [board, square, selected] : cases) {
    SCOPED_TRACE(board + " " + std::to_string(square));
    Tell(board);
    Open(square);
    EXPECT_EQ(Selected(), selected);
    const double pointer = 26 * kTwipsPerPixel;  // the middle of a square, inside its border
    const double rightmost = game.Left() + game.Width() - frmChange->Width();
    const double lowest = game.Top() + game.Height() - frmChange->Height();
    EXPECT_NEAR(frmChange->Left(), std::min(game.squ(square).Left() + game.Left() + pointer, rightmost), 30);
    EXPECT_NEAR(frmChange->Top(), std::min(game.squ(square).Top() + game.Top() + pointer, lowest), 30);
    EXPECT_TRUE(frmChange->Left() <= rightmost && frmChange->Top() <= lowest);
    CloseWith(Qt::Key_Escape);
  }
  EXPECT_TRUE(Sent().empty() && History().empty());
}

TEST_F(Change, TheButtonsPutOrTrashThePieceSendAndTell) {
  const struct {
    int square;
    std::optional<Qt::Key> key;  // that presses the button, once it has the focus; the mouse where there is none
    char after;
    const char *sent, *line;
  } steps[] = {{48, {}, 't', "448616777215", "Ann: A7 (white pawn to white queen) #2114816"},
               {6, Qt::Key_Space, 'h', "40640", "Ann: G1 (black knight to black knight) #2040604"},
               {7, {}, '.', "37", "Ann: trashed H1 (black castle) #3000702"},
               {53, Qt::Key_Enter, '.', "353", "Ann: trashed F7 (white pawn) #3005311"}};
  for (const auto& step : steps) {
    frmChess->who = "Bob";
    Open(step.square);
    CommandButton& button = step.after == '.' ? frmChange->cmdTrash : frmChange->cmdOk;
    button.SetFocus();
    step.key ? CloseWith(*step.key) : CloseWith(button);
    EXPECT_EQ(Board()[static_cast<std::size_t>(step.square)], step.after);
    EXPECT_EQ(Sent(), step.sent);
    EXPECT_EQ(History().back(), step.line);
  }
  EXPECT_TRUE(History().size() == 4 && Turn() == "you" && frmChess->squ(53).ForeColor == kWhite);

  Open(12);
  frmChange->rdo(7).Value = true;
  frmChange->rdo(7).SetFocus();
  frmChange->clr(1).Value = true;
  EXPECT_EQ(Selected(), "7 1 trash");
  Tell("11220");  // the dialog stays with its square, and with what stood there
  CloseWith(Qt::Key_Return);
  EXPECT_TRUE(Sent() == "412716777215" && Board()[12] == 'u' && Board()[20] == 'e');
  EXPECT_EQ(History().back(), "Ann: E2 (black pawn to white checker) #2011217");
  Tell("1clear");
  Open(33);
  frmChange->Native()->close();  // it has no close box
  CloseWith(frmChange->cmdOk);
  EXPECT_EQ(Sent(), "43300");
  EXPECT_EQ(History().back(), "Ann: B5 (nothing to black ) #2003300");
}

}  // namespace
}  // namespace morva
