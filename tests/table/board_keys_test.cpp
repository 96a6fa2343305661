#include <QAbstractScrollArea>
#include <QAccessible>
#include <QScrollBar>

#include "tests/game.h"

namespace morva {
namespace {

class Keys : public GameTest {
 protected:
  void SetUp() override { Sit(); }

  /// Picks the piece up by keys, and carries it to the square above.
  static void CarryUp(int square) {
    frmChess->Cursor = square;
    frmChess->FocusBoard();
    Key(Qt::Key_Space);
    Key(Qt::Key_Up);
  }

  /// What a screen reader calls the stops that Tab comes by on its way round the window, until it is back.
  static std::string Round(const Form& form, Qt::Key tab) {
    std::string stops;
    const QWidget* const start = form.Native()->focusWidget();
    do {
      QTest::keyClick(form.Native()->windowHandle(), tab);
      auto* stop = QAccessible::queryAccessibleInterface(form.Native()->focusWidget());
      stops += stop->text(QAccessible::Name).toStdString() + ". ";
    } while (form.Native()->focusWidget() != start && stops.size() < 400);
    return stops;
  }
};

TEST_F(Keys, TabGoesRoundWhatIsSeen) {
  frmChess->FocusBoard();
  EXPECT_EQ(Round(*frmChess, Qt::Key_Tab), "Chat. Show co-ordinates. A1, black castle. ");
  Key(Qt::Key_End);
  EXPECT_EQ(Round(*frmChess, Qt::Key_Backtab), "Show co-ordinates. Chat. H1, black castle. ");
  Key(Qt::Key_Backtab);
  Key(Qt::Key_Space);  // on "C"
  EXPECT_TRUE(frmChess->coordinates.CoordsShown && ChatHasFocus());
  EXPECT_EQ(Round(*frmChess, Qt::Key_Tab), "Hide co-ordinates. H1, black castle. Chat. ");
  frmToolWindow->FocusNick();
  ASSERT_TRUE(HasKeys(*frmToolWindow));
  EXPECT_EQ(Round(*frmToolWindow, Qt::Key_Tab), "Bob, white, to move. History. Ann, black. ");
  for (const auto& [way, turn] : {std::pair{Qt::Key_Backtab, "me"}, {Qt::Key_Tab, "you"}}) {
    QTest::keyClick(frmToolWindow->Native()->windowHandle(), Qt::Key_Space);  // on a nick
    EXPECT_TRUE(Sent() == turn && Turn() == turn);
    for (int stops = 0; stops < 2; ++stops) QTest::keyClick(frmToolWindow->Native()->windowHandle(), way);
  }
  for (const char* move : {"15236", "11228", "15535"}) Tell(move);
  QTest::qWait(1);  // a line is shown with the next painting
  for (const auto& [key, line] : {std::pair{Qt::Key_Home, 0}, {Qt::Key_Down, 1}, {Qt::Key_PageDown, 2}}) {
    QTest::keyClick(frmToolWindow->lstHist.Native(), key);
    EXPECT_EQ(frmToolWindow->lstHist.ListIndex(), line) << key;
  }
}

TEST_F(Keys, TheCursorStaysOnTheBoard) {
  const std::tuple<Qt::Key, Qt::KeyboardModifiers, int> steps[] = {
      {Qt::Key_Up, {}, 0},     {Qt::Key_Left, {}, 0},   {Qt::Key_Down, {}, 8},  {Qt::Key_End, {}, 15},
      {Qt::Key_Right, {}, 15}, {Qt::Key_Home, {}, 8},   {Qt::Key_Left, {}, 8},  {Qt::Key_End, Qt::ControlModifier, 63},
      {Qt::Key_Down, {}, 63},  {Qt::Key_Right, {}, 63}, {Qt::Key_Left, {}, 62}, {Qt::Key_Home, Qt::ControlModifier, 0}};
  Key(Qt::Key_F6);
  for (const auto& [key, with, square] : steps) {
    Key(key, with);
    EXPECT_TRUE(frmChess->Cursor == square && frmChess->squ(square).HasFocus()) << square;
    EXPECT_EQ(frmChess->Caption(), "Morva - Ann (" + SquareName(square) + ")");
  }
}

TEST_F(Keys, ACarriedPieceIsAsADraggedOne) {
  CarryUp(52);
  EXPECT_EQ(Marks(), "44 ");
  Key(Qt::Key_Up);
  EXPECT_TRUE(Marks() == "36 " && frmChess->squ(36).Strokes().front().color == kWhite);
  EXPECT_TRUE(frmChess->squ(52).Marked() && frmChess->Caption() == "Morva - Ann (E7)");
  const std::string actions[] = {
      "15220", "352", "452616777215", "1new", "1newc", "1clear", "1__" + frmChess->BoardLine()};
  for (const std::string& action : actions) {  // of the other side, with the very piece
    Tell("1new");
    CarryUp(52);
    EXPECT_EQ(Marks(), "44 ");
    Tell(action);
    EXPECT_TRUE(!frmChess->Carried && Marks().empty() && !frmChess->squ(52).Marked()) << action;
  }
  const std::string board = Board();
  frmChess->Cursor = 44;
  frmChess->FocusBoard();
  Key(Qt::Key_Space);
  EXPECT_TRUE(!frmChess->Carried && Sent().empty() && Board() == board);

  CarryUp(51);
  Press(53);  // the mouse takes over
  QTest::mouseMove(MainWindow(), At(45));
  EXPECT_TRUE(!frmChess->Carried && Marks() == "45 ");
  Release(45);
  EXPECT_EQ(Sent(), "15345");

  CarryUp(51);
  Tell("10816");
  Key(Qt::Key_Escape);  // in the chat line
  EXPECT_TRUE(!frmChess->Carried && Marks().empty() && Sent().empty());
}

TEST_F(Keys, TheChatLineLeafsAndRecalls) {
  const auto line = [] { return frmChess->txtIn.Text(); };
  for (const auto key : {Qt::Key_A, Qt::Key_Return, Qt::Key_B, Qt::Key_Return, Qt::Key_C}) Key(key);
  const std::pair<Qt::Key, const char*> steps[] = {{Qt::Key_Down, "c"}, {Qt::Key_Up, "b"},   {Qt::Key_Up, "a"},
                                                   {Qt::Key_Up, "a"},   {Qt::Key_Down, "b"}, {Qt::Key_Down, "c"}};
  for (const auto& [key, shown] : steps) {
    Key(key);
    EXPECT_EQ(line(), shown);
  }
  for (int i = 0; i < 40; ++i) Tell("0line");
  const QScrollBar& bar = *qobject_cast<QAbstractScrollArea*>(frmChess->txtOut.Native())->verticalScrollBar();
  ASSERT_TRUE(Await([&] { return bar.value() > 30; }));
  const int end = bar.value();
  Key(Qt::Key_PageUp);
  EXPECT_EQ(bar.value(), end - bar.pageStep());
  Key(Qt::Key_PageDown);
  EXPECT_TRUE(bar.value() == end && line() == "c" && ChatHasFocus());
}

}  // namespace
}  // namespace morva
