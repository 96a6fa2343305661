#include <QWheelEvent>

#include "platform/drawing/pixels.h"
#include "platform/window/zoom.h"
#include "tests/game.h"

namespace morva {
namespace {

class Table : public GameTest {
 protected:
  void SetUp() override { Sit(); }

  static QPoint OnScreen(int square) { return At(square) + frmChess->Native()->mapToGlobal(QPoint()); }

  /// Where the marker is in its flight from square to square: right there, or a few pixels off.
  static void ExpectMarkerOnItsWay(int from, int too) {
    const QWidget& disc = *frmShowMove->Native();
    const QPoint expected = OnScreen(from) + (OnScreen(too) - OnScreen(from)) * (frmShowMove->Step / 40.0);
    EXPECT_LE((disc.mapToGlobal(disc.rect().center()) - expected).manhattanLength(), 4);
  }
};

TEST_F(Table, TheMarkerFliesFromSquareToSquare) {
  const auto fly = [](int from, int too) {
    QElapsedTimer time;
    time.start();
    frmChess->mnuShowLast.Click();
    ASSERT_TRUE(frmShowMove.Loaded() && !frmChess->Enabled());
    EXPECT_EQ(frmShowMove->BackColor(), frmChess->squ(too).ForeColor);
    for (const int step : {1, 10}) {
      ASSERT_TRUE(Await([&] { return frmShowMove->Step >= step; }));
      ExpectMarkerOnItsWay(from, too);
    }
    Tell("15553");  // it flies on
    ASSERT_TRUE(frmShowMove->Native()->isVisible() && Await([] { return !frmShowMove.Loaded(); }));
    EXPECT_TRUE(frmChess->Enabled() && HasKeys(*frmChess));
    EXPECT_GE(time.elapsed(), 30 * 14) << "too fast to be seen";
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

  // A drag goes on, the marker keeps its way and the zoom with it; the windows keep their places.
  Press(52);
  for (const auto key : {Qt::Key_Plus, Qt::Key_Equal}) press(game, key);
  EXPECT_EQ(game.Client()->size(), QSize(672, 809));
  EXPECT_EQ(game.squ(63).Native()->geometry(), QRect(588, 588, 85, 85));
  EXPECT_EQ(game.txtIn.Native()->font().pixelSize(), 17);
  QTest::mouseMove(MainWindow(), At(36));
  Release(36);
  EXPECT_EQ(Sent(), "15236");
  game.mnuShowLast.Click();
  ASSERT_TRUE(Await([] { return frmShowMove->Step >= 10; }));
  press(tools, Qt::Key_Minus);
  EXPECT_EQ(game.Client()->size(), QSize(672, 809));
  ASSERT_TRUE(Await([] { return !frmShowMove.Loaded(); }));
  press(tools, Qt::Key_Minus);

  // The change dialog stays on its square, and a mouse event tells the same twips.
  Click(18, Qt::RightButton);
  const auto on_board = [&] { return frmChange->Native()->pos() - game.Client()->mapToGlobal(QPoint()); };
  const QPoint before = on_board();
  for (int i = 0; i < 9; ++i) press(*frmChange, Qt::Key_Minus);
  EXPECT_EQ(game.Client()->size(), QSize(336, 404));
  EXPECT_LE((on_board() - before * 0.75 / 1.25).manhattanLength(), 3);
  Unload(frmChange);
  game.Enabled = true;
  float told = 0;
  game.squ(0).MouseDown = [&](int, int, float x, float) { told = x; };
  Click(0, Qt::MiddleButton);
  EXPECT_NEAR(told, 390, 40);

  // The wheel counts whole notches, however they come.
  const std::tuple<Qt::KeyboardModifier, int, int> turns[] = {{Qt::NoModifier, 240, 336},
                                                              {Qt::ControlModifier, 60, 336},
                                                              {Qt::ControlModifier, 60, 448},
                                                              {Qt::ControlModifier, 9960, 1344},
                                                              {Qt::ControlModifier, -360, 560}};
  for (const auto& [with, turn, width] : turns) {
    QWheelEvent wheel(At(0), OnScreen(0), {}, {0, turn}, Qt::NoButton, with, Qt::NoScrollPhase, false);
    QApplication::sendEvent(game.Native(), &wheel);
    EXPECT_EQ(game.Client()->width(), width) << turn;
  }
  press(game, Qt::Key_0);
  EXPECT_NEAR(tools.Left(), game.Left() + game.Width(), 30);
  EXPECT_EQ(game.Client()->size(), QSize(448, 539));
}

TEST_F(Table, ZoomKeepsTheTableOnTheScreen) {  // of 2,560 by 2,000 pixels
  const std::tuple<int, int, int, double, double> tables[] = {
      {9000, 90000, 3240, 0.75, 0.75}, {90000, 8085, 3240, 0.75, 0.75}, {6720, 8085, 3240, 1, 3},
      {6720, 14000, 3240, 1, 2},       {6720, 8085, 20000, 1, 1.25},    {6720, 8085, 40000, 1, 3}};
  for (const auto& [width, height, beside, first, last] : tables) {
    const std::string table = std::to_string(width) + " by " + std::to_string(height) + ", " + std::to_string(beside);
    QTest::keyClick(MainWindow(), Qt::Key_0, Qt::ControlModifier);
    Zoom::BeginFor(width, height, beside);
    EXPECT_EQ(zoom_factor, first) << table;
    for (int i = 0; i < 9; ++i) QTest::keyClick(MainWindow(), Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(zoom_factor, last) << table;
  }
  Zoom::BeginFor(FrmChess::kScaleWidth, FrmChess::kScaleHeight, FrmToolWindow::kScaleWidth);
  QTest::keyClick(MainWindow(), Qt::Key_0, Qt::ControlModifier);
}

TEST_F(Table, TheClockCarriesAndGoesOn) {
  FrmChess& game = *frmChess;
  const std::pair<Clock, const char*> ticks[] = {{{.sec = 59, .min = 9}, "00:10:00"},
                                                 {{.sec = 59, .min = 59, .hour = 99}, "100:00:00"}};
  for (const auto& [before, shown] : ticks) {
    game.clock = before;
    game.onesec.Tick();
    EXPECT_EQ(frmToolWindow->lblTime.Caption(), shown);
  }
  Tell("1new");
  EXPECT_EQ(frmToolWindow->lblTime.Caption(), "100:00:00");
  game.Enabled = false;  // which stops no timer
  EXPECT_TRUE(Await([] { return frmToolWindow->lblTime.Caption() == "00:00:01"; }));
}

TEST_F(Table, DisabledItTakesNoInputAndLooksAsBefore) {
  FrmChess& game = *frmChess;
  Control& labels = game.coordinates.cmdShowCoord;
  labels.SetFocus();
  const QImage before = labels.Native()->grab().toImage();
  game.Enabled = false;
  Drag(52, 36);
  for (const auto button : {Qt::MiddleButton, Qt::RightButton}) Click(36, button);
  for (const auto key : {Qt::Key_A, Qt::Key_Return, Qt::Key_F6}) Key(key);
  for (const auto key : {Qt::Key_X, Qt::Key_T, Qt::Key_Plus}) Key(key, Qt::ControlModifier);
  Key(Qt::Key_M, Qt::AltModifier);
  game.Native()->close();
  EXPECT_TRUE(frmChess.Loaded() && !frmChange.Loaded() && QApplication::activePopupWidget() == nullptr);
  EXPECT_TRUE(Sent().empty() && Board() == kStart && game.txtIn.Text == "" && zoom_factor == 1);
  Tell("15236");
  EXPECT_TRUE(History().size() == 1 && labels.HasFocus() && labels.Native()->grab().toImage() == before);
}

TEST_F(Table, FollowsTheDesktopsColours) {
  const auto seen = [] { return frmToolWindow->Native()->grab().toImage(); };
  const QPalette usual = QGuiApplication::palette();
  const QImage before = seen();
  QGuiApplication::setPalette(QPalette(QColor(30, 40, 50)));
  QTest::qWait(1);
  EXPECT_LT(seen().pixelColor(before.width() / 2, 90).lightness(), 100);
  QGuiApplication::setPalette(usual);
  QTest::qWait(1);
  EXPECT_EQ(seen(), before);
}

TEST_F(Table, LeavingSendsTheRestAndEndsAllWindowsAndADragWithoutAQuestion) {
  for (const bool quit : {true, false}) {
    Drag(52, 36);
    frmChess->mnuCheck.Click();
    Press(51);
    QTest::mouseMove(MainWindow(), At(43));
    if (quit) {
      EXPECT_THROW(frmChess->mnuQuit.Click(), Ended);
      Release(51);
    } else {
      frmChess->Native()->close();
      EXPECT_FALSE(frmChess.Loaded() || QGuiApplication::overrideCursor() != nullptr);
    }
    EXPECT_FALSE(frmControl.Loaded() || frmToolWindow.Loaded() || frmWelcome.Loaded());
    EXPECT_TRUE(Await([this] { return peer_->state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_EQ(peer_->readAll(), "152360check");
    TearDown();
    SetUp();
  }
}

}  // namespace
}  // namespace morva
