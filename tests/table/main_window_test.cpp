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

TEST_F(Table, EverythingGrowsTogether) {
  FrmChess& game = *frmChess;
  FrmToolWindow& tools = *frmToolWindow;
  const auto press = [](Form& form, Qt::Key key) {
    QTest::keyClick(form.Native()->windowHandle(), key, Qt::ControlModifier);
  };
  const auto middle = [&](int square) { return At(square) + game.Native()->mapToGlobal(QPoint()); };
  const auto beside = [&] { EXPECT_NEAR(tools.Left(), game.Left() + game.Width(), 30); };

  // A drag goes on, and so does the marker; the windows keep their places.
  QTest::mousePress(MainWindow(), Qt::LeftButton, {}, At(52));
  for (const auto key : {Qt::Key_Plus, Qt::Key_Equal}) press(game, key);
  EXPECT_EQ(game.Client()->size(), QSize(672, 809));
  EXPECT_EQ(game.squ(63).Native()->geometry(), QRect(588, 588, 85, 85));
  EXPECT_EQ(game.txtIn.Native()->font().pixelSize(), 17);
  QTest::mouseMove(MainWindow(), At(36));
  QTest::mouseRelease(MainWindow(), Qt::LeftButton, {}, At(36));
  EXPECT_EQ(Sent(), "15236");
  game.mnuShowLast.Click();
  ASSERT_TRUE(Await([] { return frmShowMove->Step >= 10; }));
  press(tools, Qt::Key_Minus);
  ASSERT_TRUE(Await([] { return frmShowMove->Step >= 15; }));
  const QPoint expected = middle(52) + (middle(36) - middle(52)) * (frmShowMove->Step / 40.0);
  QWidget& disc = *frmShowMove->Native();
  EXPECT_LE((disc.mapToGlobal(disc.rect().center()) - expected).manhattanLength(), 4);
  ASSERT_TRUE(Await([] { return !frmShowMove.Loaded(); }));

  // The change dialog stays on its square, and a mouse event tells the same twips.
  QTest::mouseClick(MainWindow(), Qt::RightButton, {}, At(18));
  const auto on_board = [&] { return frmChange->Native()->pos() - game.Client()->mapToGlobal(QPoint()); };
  const QPoint before = on_board();
  for (int i = 0; i < 9; ++i) press(*frmChange, Qt::Key_Minus);
  EXPECT_EQ(game.Client()->size(), QSize(336, 404));
  EXPECT_LE((on_board() - before * 0.75 / 1.25).manhattanLength(), 3);
  Unload(frmChange);
  game.Enabled = true;
  float told = 0;
  game.squ(0).MouseDown = [&](int, int, float x, float) { told = x; };
  QTest::mouseClick(MainWindow(), Qt::MiddleButton, {}, At(0));
  EXPECT_NEAR(told, 390, 40);
  press(game, Qt::Key_0);
  beside();
  EXPECT_EQ(game.Client()->size(), QSize(448, 539));
}

TEST_F(Table, TheWindowsStandSideBySideOnceAndTakeTheNick) {
  FrmToolWindow& tools = *frmToolWindow;
  EXPECT_TRUE(frmChess->Caption() == "Morva - Ann" && tools.Caption() == "Ann" && Board() == kStart);
  EXPECT_NEAR(tools.Left(), frmChess->Left() + frmChess->Width(), 30);
  EXPECT_NEAR(tools.Top(), frmChess->Top(), 30);
  EXPECT_TRUE(ChatHasFocus() && frmChess->Client()->size() == QSize(448, 539));
  frmChess->Left = 150;
  tools.Left = 7500;
  tools.mnuAlways.Checked = false;
  for (Form* form : {static_cast<Form*>(&tools), static_cast<Form*>(&*frmChess)}) {
    form->SetFocus();
    ASSERT_TRUE(Await([form] { return QApplication::activeWindow() == form->Native(); }));
  }
  EXPECT_TRUE(frmChess->Left() == 150 && tools.Left() == 7500 && !tools.frmext.ontop());
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
