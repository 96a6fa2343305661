#include "tests/game.h"

namespace morva {
namespace {

class Table : public GameTest {
 protected:
  void SetUp() override { Sit(); }

  /// The empty squares that something is painted on.
  static std::vector<int> Marked() {
    std::vector<int> marked;
    for (const PictureBox& square : frmChess->squ) {
      if (square.Tag == "0" && !square.Strokes().empty()) marked.push_back(square.Index);
    }
    return marked;
  }
  using Squares = std::vector<int>;
};

TEST_F(Table, ADragMarksTheEmptySquareUnderThePointer) {
  const QPoint chat = frmChess->txtOut.Native()->mapTo(frmChess->Native(), QPoint(100, 30));
  QTest::mouseMove(MainWindow(), At(18));
  EXPECT_EQ(frmChess->Caption(), "Morva - Ann (C3)");
  QTest::mouseMove(MainWindow(), At(52));
  QTest::mousePress(MainWindow(), Qt::LeftButton, {}, At(52));
  EXPECT_EQ(Marked(), Squares{});
  const std::pair<QPoint, Squares> places[] = {
      {At(44), {44}}, {At(44, {5, 5}), {44}}, {At(36), {36}}, {At(12), {}}, {At(20), {20}}, {chat, {}}, {At(35), {35}},
      {{-30, 10}, {}}, {At(36), {36}}};
  for (const auto& [place, marked] : places) {
    QTest::mouseMove(MainWindow(), place);
    EXPECT_EQ(Marked(), marked) << place.x() << ", " << place.y();
  }
  EXPECT_EQ(frmChess->squ(36).Strokes().front().color, kWhite);
  EXPECT_EQ(frmChess->Caption(), "Morva - Ann (E7)");
  EXPECT_EQ(Board(), kStart);
  QTest::mousePress(MainWindow(), Qt::RightButton, {}, At(36));
  EXPECT_EQ(Marked(), Squares{});
  QTest::mouseRelease(MainWindow(), Qt::RightButton, {}, At(36));
  QTest::mouseRelease(MainWindow(), Qt::LeftButton, {}, At(36));
  EXPECT_TRUE(Board() == kStart && !frmChange.Loaded());

  QTest::mousePress(MainWindow(), Qt::LeftButton, {}, At(33));
  QTest::mouseMove(MainWindow(), At(34));
  EXPECT_EQ(Marked(), Squares{});
  QTest::mouseRelease(MainWindow(), Qt::LeftButton, {}, At(34));
}

TEST_F(Table, ADropOnAnEmptySquareMoves) {
  frmToolWindow->highlight("me");
  frmChess->cmdShowCoord.SetFocus();
  Drag(52, 36);
  std::string board = kStart;
  std::swap(board[52], board[36]);
  EXPECT_EQ(Board(), board);
  EXPECT_EQ(Marked(), Squares{});
  EXPECT_EQ(History(), Lines{"Ann: E7 - E5 (white pawn) #1523611"});
  EXPECT_EQ(Turn(), "you");
  EXPECT_EQ(Focused(), &frmChess->txtIn);
  Drag(12, 28);  // the other colour, out of turn
  EXPECT_EQ(History().back(), "Ann: E2 - E4 (black pawn) #1122801");
  Tell("40310");
  EXPECT_EQ(Sent(), "1523611228");
  Drag(3, 56 - 16);
  Drag(40, 16);
  EXPECT_EQ(Board()[16], 'e');

  frmToolWindow->highlight("me");
  const auto [before, lines] = std::pair(Board(), History());
  Sent();
  for (const auto& [from, too] : {std::pair{57, 36}, {36, 36}, {33, 0}}) Drag(from, too);
  EXPECT_TRUE(Board() == before && History() == lines && Turn() == "me");
  EXPECT_EQ(Sent(), "");
  EXPECT_TRUE(frmChess->i1 == 40 && frmChess->i2 == 16);
  Drag(33, 34);  // nothing carried: the player passes
  EXPECT_TRUE(Board() == before && History() == lines && Turn() == "you");
  EXPECT_EQ(Sent(), "13334");
}

TEST_F(Table, AFarRowConvertsHereAsThere) {
  Tell("1__" + std::string(8, 'd') + "oeuk" + std::string(36, 'd') + "oeuk" + std::string(12, 'd'));
  const struct {
    int from, too;
    char piece;
  } moves[] = {{8, 0, 't'}, {9, 1, 'e'}, {10, 2, 'v'}, {11, 3, 'k'}, {48, 60, 'o'}, {49, 61, 'j'}, {50, 62, 'u'},
               {51, 63, 'l'}};
  for (const auto& move : moves) {
    Drag(move.from, move.too);
    EXPECT_EQ(Board()[static_cast<std::size_t>(move.too)], move.piece) << move.from;
  }
  EXPECT_EQ(History().front(), "Ann: A2 - A1 (white pawn) #1080011");
  EXPECT_EQ(History().size(), std::size(moves));
}

TEST_F(Table, TheMiddleButtonHandsTheTurnOver) {
  EXPECT_EQ(Turn(), "you");
  for (const char* turn : {"me", "you", "me"}) {
    QTest::mouseClick(MainWindow(), Qt::MiddleButton, {}, At(52));
    EXPECT_EQ(Turn(), turn);
    EXPECT_EQ(Sent(), turn);
  }
  EXPECT_EQ(Board(), kStart);
}

TEST_F(Table, TheMarkerFliesFromSquareToSquare) {
  FrmChess& game = *frmChess;
  const auto fly = [&](int from, int too) {
    QTest::keyClick(MainWindow(), Qt::Key_S, Qt::ControlModifier);
    ASSERT_TRUE(frmShowMove.Loaded());
    FrmShowMove& marker = *frmShowMove;
    EXPECT_EQ(marker.BackColor(), game.squ(too).ForeColor);
    // A disc of 22 pixels has its middle on the middle of a square of 56.
    const auto corner = [&](int square) {
      return (game.squ(square).Native()->mapToGlobal(QPoint(28, 28)) - QPoint(11, 11)) * kTwipsPerPixel;
    };
    EXPECT_LE((QPoint(marker.X1, marker.Y1) - corner(from)).manhattanLength(), 30);
    EXPECT_LE((QPoint(marker.X2, marker.Y2) - corner(too)).manhattanLength(), 30);
    EXPECT_FALSE(game.Enabled());
    QTest::mouseClick(MainWindow(), Qt::MiddleButton, {}, At(33));
    EXPECT_EQ(Sent(), "");
    ASSERT_TRUE(Await([&] { return marker.Step >= 10; }));
    const double part = marker.Step / 40.0;
    EXPECT_NEAR(marker.Left(), marker.X1 + part * (marker.X2 - marker.X1), 15);
    EXPECT_NEAR(marker.Top(), marker.Y1 + part * (marker.Y2 - marker.Y1), 15);
    EXPECT_TRUE(marker.Native()->isVisible());
    Tell("15553");
    ASSERT_TRUE(Await([] { return !frmShowMove.Loaded(); }));
    EXPECT_TRUE(game.Enabled());
    EXPECT_TRUE(QTest::qWaitForWindowActive(game.Native()));
  };
  fly(0, 0);
  Tell("15220");
  fly(52, 20);
  EXPECT_TRUE(game.i1 == 55 && game.i2 == 53);
  fly(55, 53);
}

TEST_F(Table, TheWindowsStandSideBySideOnceAndTakeTheNick) {
  EXPECT_TRUE(frmChess->Init);
  EXPECT_EQ(frmChess->Caption(), "Morva - Ann");
  EXPECT_EQ(frmToolWindow->Caption(), "Ann");
  EXPECT_NEAR(frmToolWindow->Left(), frmChess->Left() + frmChess->Width(), 30);
  EXPECT_NEAR(frmToolWindow->Top(), frmChess->Top(), 30);
  EXPECT_EQ(Board(), kStart);
  EXPECT_EQ(Focused(), &frmChess->txtIn);
  EXPECT_EQ(frmChess->Client()->size(), QSize(448, 539));
  frmChess->Left = 150;
  frmToolWindow->Left = 9000;
  frmToolWindow->SetFocus();
  ASSERT_TRUE(QTest::qWaitForWindowActive(frmToolWindow->Native()));
  frmToolWindow->mnuAlways.Checked = false;
  frmChess->SetFocus();
  ASSERT_TRUE(QTest::qWaitForWindowActive(frmChess->Native()));
  EXPECT_TRUE(frmChess->Left() == 150 && frmToolWindow->Left() == 9000);
  EXPECT_FALSE(frmToolWindow->frmext.ontop());
}

TEST_F(Table, QuittingClosesTheLineAndEndsWithoutAQuestion) {
  const auto hangs_up = [this] { return Await([this] { return peer_->state() == QAbstractSocket::UnconnectedState; }); };
  Drag(52, 36);
  frmChess->mnuCheck.Click();
  frmChess->mnuWakeUp.Click();
  EXPECT_THROW(frmChess->mnuQuit.Click(), Ended);
  EXPECT_FALSE(frmControl.Loaded() || frmToolWindow.Loaded());
  EXPECT_TRUE(hangs_up());
  EXPECT_EQ(peer_->readAll().toStdString(), "152360check0yours");
}

TEST_F(Table, TheCloseBoxEndsAllWindows) {
  frmChess->Native()->close();
  EXPECT_FALSE(frmChess.Loaded() || frmControl.Loaded() || frmToolWindow.Loaded() || frmWelcome.Loaded());
  EXPECT_TRUE(Await([this] { return peer_->state() == QAbstractSocket::UnconnectedState; }));
}

}  // namespace
}  // namespace morva
