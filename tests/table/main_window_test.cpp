#include "tests/game.h"

namespace morva {
namespace {

class Table : public GameTest {
 protected:
  void SetUp() override { Sit(); }
  bool HungUp() {
    return Await([this] { return peer_->state() == QAbstractSocket::UnconnectedState; });
  }
};

TEST_F(Table, ADragMarksTheEmptySquareUnderThePointer) {
  using Squares = std::vector<int>;
  const auto marked_at = [](QPoint place) {
    QTest::mouseMove(MainWindow(), place);
    Squares squares;
    for (const PictureBox& square : frmChess->squ) {
      if (square.Tag == "0" && !square.Strokes().empty()) squares.push_back(square.Index);
    }
    return squares;
  };
  EXPECT_EQ(marked_at(At(18)), Squares{});
  EXPECT_EQ(frmChess->Caption(), "Morva - Ann (C3)");
  QTest::mouseMove(MainWindow(), At(52));
  QTest::mousePress(MainWindow(), Qt::LeftButton, {}, At(52));
  const QPoint chat = At(60) + QPoint(0, 60), outside(-30, 10);
  const std::pair<QPoint, Squares> places[] = {{At(52), {}},   {At(44), {44}}, {At(36), {36}}, {At(12), {}},
                                               {At(20), {20}}, {chat, {}},     {At(35), {35}}, {outside, {}}};
  for (const auto& [place, squares] : places) EXPECT_EQ(marked_at(place), squares) << place.x() << ", " << place.y();
  EXPECT_EQ(marked_at(At(44)), Squares{44});
  EXPECT_EQ(frmChess->squ(44).Strokes().front().color, kWhite);
  EXPECT_EQ(frmChess->Caption(), "Morva - Ann (E7)");
  Tell("352");  // the piece is gone from under the hand
  EXPECT_EQ(marked_at(At(43)), Squares{});
  QTest::mouseRelease(MainWindow(), Qt::LeftButton, {}, outside);
}

TEST_F(Table, ADropOnAnEmptySquareMovesAndGivesTheTurn) {
  const struct {
    int from, too;
    const char* line;  // of the history; none where nothing moves
    const char* turn;
  } drops[] = {{52, 36, "Ann: E7 - E5 (white pawn) #1523611", "you"},
               {12, 28, "Ann: E2 - E4 (black pawn) #1122801", "you"},  // the other colour, out of turn
               {57, 36, nullptr, "me"},                                // a piece stands there
               {36, 36, nullptr, "me"},
               {33, 0, nullptr, "me"},
               {33, 34, nullptr, "you"}};
  std::string board = kStart;
  Lines history;
  for (const auto& drop : drops) {
    frmToolWindow->highlight("me");
    frmChess->coordinates.cmdShowCoord.SetFocus();
    Drag(drop.from, drop.too);
    if (drop.line != nullptr) {
      std::swap(board[static_cast<std::size_t>(drop.from)], board[static_cast<std::size_t>(drop.too)]);
      history.push_back(drop.line);
    }
    EXPECT_TRUE(Board() == board && History() == history) << drop.from;
    EXPECT_EQ(Turn(), drop.turn) << drop.from;
    EXPECT_EQ(ChatHasFocus(), drop.turn == std::string("you")) << drop.from;
  }
  EXPECT_EQ(Sent(), "152361122813334");
}

TEST_F(Table, TheMarkerFliesFromSquareToSquare) {
  FrmChess& game = *frmChess;
  const auto fly = [&](int from, int too) {
    game.mnuShowLast.Click();
    ASSERT_TRUE(frmShowMove.Loaded() && !game.Enabled());
    FrmShowMove& marker = *frmShowMove;
    EXPECT_EQ(marker.BackColor(), game.squ(too).ForeColor);
    // A disc of 22 pixels has its middle on the middle of a square of 56.
    const auto corner = [&](int square) {
      return (game.squ(square).Native()->mapToGlobal(QPoint(28, 28)) - QPoint(11, 11)) * kTwipsPerPixel;
    };
    EXPECT_LE((QPoint(marker.X1, marker.Y1) - corner(from)).manhattanLength(), 30);
    EXPECT_LE((QPoint(marker.X2, marker.Y2) - corner(too)).manhattanLength(), 30);
    QTest::mouseClick(MainWindow(), Qt::MiddleButton, {}, At(33));
    EXPECT_EQ(Sent(), "");
    ASSERT_TRUE(Await([&] { return marker.Step >= 10; }));
    const double part = marker.Step / 40.0;
    EXPECT_NEAR(marker.Left(), marker.X1 + part * (marker.X2 - marker.X1), 15);
    EXPECT_NEAR(marker.Top(), marker.Y1 + part * (marker.Y2 - marker.Y1), 15);
    Tell("15553");  // it flies on
    ASSERT_TRUE(marker.Native()->isVisible() && Await([] { return !frmShowMove.Loaded(); }));
    EXPECT_TRUE(game.Enabled() && QTest::qWaitForWindowActive(game.Native()));
  };
  fly(0, 0);
  Tell("15220");
  Tell("42060");  // it takes the colour of what stands there by now
  fly(52, 20);
}

TEST_F(Table, TheWindowsStandSideBySideOnceAndTakeTheNick) {
  FrmToolWindow& tools = *frmToolWindow;
  EXPECT_TRUE(frmChess->Caption() == "Morva - Ann" && tools.Caption() == "Ann" && Board() == kStart);
  EXPECT_NEAR(tools.Left(), frmChess->Left() + frmChess->Width(), 30);
  EXPECT_NEAR(tools.Top(), frmChess->Top(), 30);
  EXPECT_TRUE(ChatHasFocus() && frmChess->Client()->size() == QSize(448, 539));
  frmChess->Left = 150;
  tools.Left = 9000;
  tools.mnuAlways.Checked = false;
  for (Form* form : {static_cast<Form*>(&tools), static_cast<Form*>(&*frmChess)}) {
    form->SetFocus();
    ASSERT_TRUE(Await([form] { return QApplication::activeWindow() == form->Native(); }));
  }
  EXPECT_TRUE(frmChess->Left() == 150 && tools.Left() == 9000 && !tools.frmext.ontop());
}

TEST_F(Table, QuittingSendsTheRestAndEndsWithoutAQuestion) {
  Drag(52, 36);
  frmChess->mnuCheck.Click();
  frmChess->mnuWakeUp.Click();
  EXPECT_THROW(frmChess->mnuQuit.Click(), Ended);
  EXPECT_TRUE(!frmControl.Loaded() && !frmToolWindow.Loaded() && HungUp());
  EXPECT_EQ(peer_->readAll().toStdString(), "152360check0yours");
}

TEST_F(Table, TheCloseBoxEndsAllWindowsAndADrag) {
  QTest::mousePress(MainWindow(), Qt::LeftButton, {}, At(52));
  QTest::mouseMove(MainWindow(), At(44));
  frmChess->Native()->close();
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_FALSE(frmChess.Loaded() || frmControl.Loaded() || frmToolWindow.Loaded() || frmWelcome.Loaded());
  EXPECT_TRUE(HungUp());
  QWidget elsewhere;
  elsewhere.show();
  QTest::mouseRelease(elsewhere.windowHandle(), Qt::LeftButton);
}

}  // namespace
}  // namespace morva
