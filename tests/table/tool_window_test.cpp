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

TEST_F(ToolWindow, StaysOnTopWhileItsMenuSaysSo) {
  FrmToolWindow& tools = *frmToolWindow;
  for (const bool on : {true, false, true}) {
    EXPECT_TRUE(tools.mnuAlways.Checked() == on && tools.frmext.ontop() == on);
    EXPECT_TRUE(Await([&] { return tools.Native()->windowFlags().testFlag(Qt::WindowStaysOnTopHint) == on; }));
    tools.mnuAlways.Click();
  }
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
