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
  } ticks[] = {{0, 9, 58, "00:09:59"}, {0, 9, 59, "00:10:00"}, {9, 59, 59, "10:00:00"}, {99, 59, 59, "100:00:00"}};
  FrmChess& game = *frmChess;
  for (const auto& tick : ticks) {
    game.clock.hour = tick.hour;
    game.clock.min = tick.min;
    game.clock.sec = tick.sec;
    game.onesec.Tick();
    EXPECT_EQ(frmToolWindow->lblTime.Caption(), tick.shown);
  }
  Tell("1new");
  EXPECT_EQ(frmToolWindow->lblTime.Caption(), "100:00:00");
  EXPECT_TRUE(Await([] { return frmToolWindow->lblTime.Caption() == "00:00:01"; }));
}

TEST_F(ToolWindow, GrowsInWidthAlone) {
  FrmToolWindow& tools = *frmToolWindow;
  tools.Native()->resize(tools.Native()->width() + 100, tools.Native()->height() + 100);
  QTest::qWait(1);
  EXPECT_TRUE(tools.ScaleWidth() == 3240 + 1500 && tools.ScaleHeight() == 3570);
  EXPECT_TRUE(tools.lblTime.Width() == 4740 && tools.lblVS.Width() == 4740 && tools.lstHist.Width() == 4740);
}

TEST_F(ToolWindow, TheRightButtonOpensItsMenuOnTheLabels) {
  FrmToolWindow& tools = *frmToolWindow;
  // Opens the menu and presses its item.
  const auto opens = [&](const Control& control, QPoint at) {
    const QPoint place = control.Native()->mapTo(tools.Native(), at);
    bool seen = false;
    QTimer::singleShot(20, [&] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (menu == nullptr) return;
      seen = (menu->pos() - tools.Native()->mapToGlobal(place)).manhattanLength() <= 2;
      menu->actions().front()->trigger();
      menu->close();
    });
    QTest::mouseClick(tools.Native()->windowHandle(), Qt::RightButton, {}, place);
    QTest::qWait(30);
    return seen;
  };
  bool on = true;
  for (Label* label : {&tools.lblNick, &tools.lblOpNick, &tools.lblTime, &tools.lblVS}) {
    EXPECT_TRUE(tools.mnuAlways.Checked() == on && tools.frmext.ontop() == on);
    EXPECT_EQ(tools.Native()->windowFlags().testFlag(Qt::WindowStaysOnTopHint), on);
    EXPECT_TRUE(opens(*label, {20, 8}));
    on = !on;
  }
  EXPECT_FALSE(opens(tools.lstHist, {20, 20}) || opens(tools.lshape, {8, 8}) || opens(tools.picContain, {10, 100}));
  EXPECT_EQ(Sent(), "");
}

TEST_F(ToolWindow, HistoryShowsItsLastLineAndTheChatKeepsTheFocus) {
  frmChess->coordinates.cmdShowCoord.SetFocus();
  Tell("15236");
  EXPECT_TRUE(frmToolWindow->lstHist.ListIndex == 0 && ChatHasFocus());
  frmChess->Enabled = false;
  frmChess->coordinates.cmdShowCoord.SetFocus();
  Tell("13620");
  EXPECT_TRUE(frmToolWindow->lstHist.ListIndex == 1 && !ChatHasFocus());
}

}  // namespace
}  // namespace morva
