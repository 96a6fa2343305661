#include <QMenu>

#include "tests/game.h"

namespace morva {
namespace {

class ToolWindow : public GameTest {
 protected:
  void SetUp() override { Sit(); }
};

TEST_F(ToolWindow, TheClockCarries) {
  const struct {
    int hour, min, sec;
    const char* shown;
  } ticks[] = {{0, 0, 0, "00:00:01"},    {0, 0, 58, "00:00:59"},   {0, 0, 59, "00:01:00"},   {0, 9, 59, "00:10:00"},
               {0, 59, 59, "01:00:00"},  {9, 59, 59, "10:00:00"},  {99, 59, 58, "99:59:59"}, {99, 59, 59, "100:00:00"},
               {1000, 0, 0, "1000:00:01"}};
  FrmChess& game = *frmChess;
  for (const auto& tick : ticks) {
    game.hour = tick.hour;
    game.min = tick.min;
    game.sec = tick.sec;
    game.onesec.Tick();
    EXPECT_EQ(frmToolWindow->lblTime.Caption(), tick.shown);
  }
  Tell("1new");
  EXPECT_EQ(frmToolWindow->lblTime.Caption(), "1000:00:01");
  EXPECT_TRUE(game.onesec.Interval == 1000 && game.onesec.Enabled());
  EXPECT_TRUE(Await([] { return frmToolWindow->lblTime.Caption() == "00:00:01"; }));
}

TEST_F(ToolWindow, TheTurnIsSetNeverToggled) {
  for (const char* turn : {"me", "me", "you", "you", "me"}) {
    frmToolWindow->highlight(turn);
    EXPECT_EQ(Turn(), turn);
  }
  frmToolWindow->highlight("anything else");
  EXPECT_EQ(Turn(), "you");
  EXPECT_EQ(frmToolWindow->lblOpNick.ForeColor(), kButtonShadow);
}

TEST_F(ToolWindow, GrowsInWidthAlone) {
  FrmToolWindow& tools = *frmToolWindow;
  const double height = tools.ScaleHeight();
  tools.Native()->resize(tools.Native()->width() + 100, tools.Native()->height() + 100);
  QTest::qWait(1);
  EXPECT_TRUE(tools.ScaleWidth() == 3240 + 1500 && tools.ScaleHeight() == height);
  for (Control* control : std::initializer_list<Control*>{&tools.lblTime, &tools.lblVS, &tools.lstHist}) {
    EXPECT_EQ(control->Width(), 4740);
  }
  tools.Native()->resize(10, 10);
  QTest::qWait(1);
  EXPECT_TRUE(tools.ScaleHeight() == height && tools.lblTime.Width() == tools.ScaleWidth());
}

TEST_F(ToolWindow, TheRightButtonOpensItsMenu) {
  FrmToolWindow& tools = *frmToolWindow;
  const auto opens = [&](const QWidget* widget, QPoint at) {
    bool seen = false;
    QPoint place;
    QTimer::singleShot(20, [&] {
      QWidget* menu = QApplication::activePopupWidget();
      seen = menu != nullptr;
      if (seen) place = menu->pos();
      if (seen) menu->close();
    });
    QTest::mouseClick(tools.Native()->windowHandle(), Qt::RightButton, {}, widget->mapTo(tools.Native(), at));
    QTest::qWait(30);
    if (seen) {
      EXPECT_LE((place - widget->mapToGlobal(at)).manhattanLength(), 2);
    }
    return seen;
  };
  for (Label* label : {&tools.lblNick, &tools.lblOpNick, &tools.lblTime, &tools.lblVS}) {
    EXPECT_TRUE(opens(label->Native(), {20, 8}));
  }
  EXPECT_FALSE(opens(tools.lstHist.Native(), {20, 20}));
  EXPECT_FALSE(opens(tools.lshape.Native(), {8, 8}));
  EXPECT_FALSE(opens(tools.picContain.Native(), {10, 100}));
  EXPECT_EQ(Sent(), "");

  EXPECT_TRUE(tools.mnuAlways.Checked() && tools.frmext.ontop());
  for (const bool on : {false, true}) {
    QTimer::singleShot(20, [] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_NE(menu, nullptr);
      menu->actions().front()->trigger();
      menu->close();
    });
    QTest::mouseClick(tools.lblTime.Native(), Qt::RightButton);
    QTest::qWait(30);
    EXPECT_TRUE(tools.mnuAlways.Checked() == on && tools.frmext.ontop() == on);
    EXPECT_EQ(tools.Native()->windowFlags().testFlag(Qt::WindowStaysOnTopHint), on);
  }
}

TEST_F(ToolWindow, HistoryShowsItsLastLineAndTheChatKeepsTheFocus) {
  frmChess->cmdShowCoord.SetFocus();
  Tell("15236");
  EXPECT_EQ(frmToolWindow->lstHist.ListIndex(), 0);
  EXPECT_EQ(Focused(), &frmChess->txtIn);
  Tell("13620");
  frmToolWindow->lstHist.ListIndex = 0;
  frmChess->Enabled = false;
  frmChess->cmdShowCoord.SetFocus();
  Tell("12036");
  EXPECT_EQ(frmToolWindow->lstHist.ListIndex(), 2);
  EXPECT_EQ(Focused(), nullptr);
}

}  // namespace
}  // namespace morva
