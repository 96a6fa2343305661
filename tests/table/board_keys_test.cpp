#include <QAbstractScrollArea>
#include <QScrollBar>

#include "tests/game.h"

namespace morva {
namespace {

class Keys : public GameTest {
 protected:
  void SetUp() override { Sit(); }

  static void Press(Qt::Key key, Qt::KeyboardModifiers with = {}) { QTest::keyClick(MainWindow(), key, with); }

  /// What Tab comes by on its way round the window, until it is back.
  static std::string Round(Form& form, Qt::Key tab) {
    std::string stops;
    const QWidget* const start = form.Native()->focusWidget();
    do {
      QTest::keyClick(form.Native()->windowHandle(), tab);
      stops += Name(form.Native()->focusWidget()) + ' ';
    } while (form.Native()->focusWidget() != start && stops.size() < 400);
    return stops;
  }

  static std::string Name(const QWidget* widget) {
    FrmChess& game = *frmChess;
    FrmToolWindow& tools = *frmToolWindow;
    const std::pair<const Control*, const char*> names[] = {
        {&game.txtIn, "txtIn"},      {&game.coordinates.cmdShowCoord, "cmdShowCoord"},
        {&tools.lblNick, "lblNick"}, {&tools.lblOpNick, "lblOpNick"},
        {&tools.lstHist, "lstHist"}, {&game.squ(game.Cursor), "squ"}};
    for (const auto& [control, name] : names) {
      if (control->Native() == widget) return name;
    }
    for (const CommandButton& label : game.coordinates.Coord) {
      if (label.Native() == widget) return label.Caption();
    }
    return "?";
  }

  static std::vector<int> Marked() {
    std::vector<int> squares;
    for (const PictureBox& square : frmChess->squ) {
      if (square.Tag == "0" && !square.Strokes().empty()) squares.push_back(square.Index);
    }
    return squares;
  }
};

TEST_F(Keys, TabGoesRoundWhatIsSeen) {
  frmChess->FocusBoard();
  EXPECT_EQ(Round(*frmChess, Qt::Key_Tab), "txtIn cmdShowCoord squ ");
  Press(Qt::Key_End);
  EXPECT_EQ(Round(*frmChess, Qt::Key_Backtab), "cmdShowCoord txtIn squ ");
  EXPECT_TRUE(frmChess->squ(7).HasFocus());
  Press(Qt::Key_Backtab);
  Press(Qt::Key_Space);  // on "C"
  EXPECT_TRUE(frmChess->coordinates.CoordsShown && ChatHasFocus());
  EXPECT_EQ(Round(*frmChess, Qt::Key_Tab), "A B C D E F G H 1 2 3 4 5 6 7 8 cmdShowCoord squ txtIn ");
  frmToolWindow->SetFocus();
  ASSERT_TRUE(QTest::qWaitForWindowActive(frmToolWindow->Native()));
  frmToolWindow->lblNick.SetFocus();
  EXPECT_EQ(Round(*frmToolWindow, Qt::Key_Tab), "lblOpNick lstHist lblNick ");
}

TEST_F(Keys, TheCursorStaysOnTheBoard) {
  const struct {
    Qt::Key key;
    Qt::KeyboardModifiers with;
    int square;
  } steps[] = {
      {Qt::Key_Up, {}, 0},     {Qt::Key_Left, {}, 0},   {Qt::Key_Down, {}, 8},  {Qt::Key_End, {}, 15},
      {Qt::Key_Right, {}, 15}, {Qt::Key_Home, {}, 8},   {Qt::Key_Left, {}, 8},  {Qt::Key_End, Qt::ControlModifier, 63},
      {Qt::Key_Down, {}, 63},  {Qt::Key_Right, {}, 63}, {Qt::Key_Left, {}, 62}, {Qt::Key_Home, Qt::ControlModifier, 0}};
  Press(Qt::Key_F6);
  for (const auto& step : steps) {
    Press(step.key, step.with);
    EXPECT_TRUE(frmChess->Cursor == step.square && frmChess->squ(step.square).HasFocus()) << step.square;
  }
}

TEST_F(Keys, ACarriedPieceIsAsADraggedOne) {
  using Squares = std::vector<int>;
  frmChess->Cursor = 52;
  frmChess->FocusBoard();
  Press(Qt::Key_Space);
  for (const int square : {44, 36}) {
    Press(Qt::Key_Up);
    EXPECT_TRUE(Marked() == Squares{square} && frmChess->squ(square).Strokes().front().color == kWhite) << square;
  }
  Tell("15220");  // the other side moves the very piece, and the keys go to the chat
  EXPECT_TRUE(ChatHasFocus());
  Press(Qt::Key_F6);
  Press(Qt::Key_Up);
  EXPECT_EQ(Marked(), Squares{});
  const std::string board = Board();
  Press(Qt::Key_Space);
  EXPECT_TRUE(Sent() == "15228" && Board() == board && Turn() == "you");  // nothing was dropped: a pass

  frmChess->Cursor = 51;
  frmChess->FocusBoard();
  Press(Qt::Key_Space);
  Press(Qt::Key_Up);
  QTest::mousePress(MainWindow(), Qt::LeftButton, {}, At(53));  // the mouse takes over
  QTest::mouseMove(MainWindow(), At(45));
  EXPECT_TRUE(!frmChess->Carried && Marked() == Squares{45});
  QTest::mouseRelease(MainWindow(), Qt::LeftButton, {}, At(45));
  EXPECT_EQ(Sent(), "15345");

  frmChess->Cursor = 51;
  frmChess->FocusBoard();
  Press(Qt::Key_Space);
  Press(Qt::Key_Up);
  Tell("10816");
  Press(Qt::Key_Escape);  // in the chat line
  EXPECT_TRUE(!frmChess->Carried && Marked().empty() && Sent().empty());
}

TEST_F(Keys, TheChatLineLeafsAndRecalls) {
  const auto line = [] { return frmChess->txtIn.Text(); };
  for (const char* said : {"one", "two"}) {
    frmChess->txtIn.Text = said;
    Press(Qt::Key_Return);
  }
  frmChess->txtIn.Text = "dra";
  const std::pair<Qt::Key, const char*> steps[] = {{Qt::Key_Down, "dra"}, {Qt::Key_Up, "two"},   {Qt::Key_Up, "one"},
                                                   {Qt::Key_Up, "one"},   {Qt::Key_Down, "two"}, {Qt::Key_Down, "dra"}};
  for (const auto& [key, shown] : steps) {
    Press(key);
    EXPECT_EQ(line(), shown);
  }
  for (int i = 0; i < 40; ++i) Tell("0line");
  const QScrollBar& bar = *qobject_cast<QAbstractScrollArea*>(frmChess->txtOut.Native())->verticalScrollBar();
  ASSERT_TRUE(Await([&] { return bar.value() > 30; }));
  const int end = bar.value();
  Press(Qt::Key_PageUp);
  EXPECT_EQ(bar.value(), end - bar.pageStep());
  Press(Qt::Key_PageDown);
  EXPECT_TRUE(bar.value() == end && line() == "dra" && ChatHasFocus());
}

}  // namespace
}  // namespace morva
