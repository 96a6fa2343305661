#include <QClipboard>

#include "tests/game.h"

namespace morva {
namespace {

class Chat : public GameTest {
 protected:
  void SetUp() override { Sit(); }

  static void Type(const std::string& text) {
    for (const char key : text) QTest::keyClick(MainWindow(), key);
  }
  static std::string Log() { return frmChess->txtOut.Text(); }
};

TEST_F(Chat, LinesGoToTheLogAndOut) {
  Type("well played\r");
  EXPECT_TRUE(frmChess->txtIn.Text == "" && ChatHasFocus());
  Tell("0you too");
  Type("check\r");  // a canned message to the other side alone
  EXPECT_EQ(Log(), "\r\n<Ann>  well played\r\n<Bob>  you too\r\n<Ann>  check");
  EXPECT_EQ(Sent(), "0well played0check");
  frmChess->txtIn.Text = "a\x01\x7F";
  Type("\r");
  EXPECT_EQ(Sent(), "0a\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_TRUE(Log().ends_with("\r\n<Ann>  a\xEF\xBF\xBD\xEF\xBF\xBD"));
  for (const std::string line : {" /clear", "/clear ", "/clea", "/clear now"}) {
    Type(line + "\r");
    EXPECT_TRUE(Log().ends_with("\r\n<Ann>  " + line) && Sent() == "0" + line) << line;
  }
  for (const char* command : {"/clear\r", "/cLeAR\r"}) {
    Tell("0line");
    Type(command);
    EXPECT_TRUE(Log().empty() && frmChess->txtIn.Text == "" && Sent().empty()) << command;
  }
  frmChess->coordinates.cmdShowCoord.SetFocus();
  frmChess->cmdDefault.Click();
  EXPECT_TRUE(Log().empty() && Sent().empty() && ChatHasFocus() && frmChess->cmdDefault.Left() < -9000);
}

TEST_F(Chat, TheMenuActsInTheMiddleOfALine) {
  Type("half a line");
  QGuiApplication::clipboard()->setText("before");
  frmChess->squ(0).SetFocus();
  QTest::mouseClick(MainWindow(), Qt::LeftButton, {}, At(63) + QPoint(-200, 50));  // on the log
  EXPECT_TRUE(ChatHasFocus() && frmChess->txtIn.SelStart() == 0 && frmChess->txtIn.SelLength() == 11);
  const struct {
    Qt::Key key;
    Qt::KeyboardModifier modifier;
    const char* sent;
    Menu& item;
  } shortcuts[] = {{Qt::Key_C, Qt::ControlModifier, "0check", frmChess->mnuCheck},
                   {Qt::Key_X, Qt::ControlModifier, "0cmate", frmChess->mnuCheckMate},
                   {Qt::Key_Z, Qt::ControlModifier, "0smate", frmChess->mnuStaleMate},
                   {Qt::Key_W, Qt::ControlModifier, "0yours", frmChess->mnuWakeUp},
                   {Qt::Key_I, Qt::ControlModifier, "0iwin", frmChess->mnuIWin},
                   {Qt::Key_F1, Qt::ControlModifier, "1new", frmChess->mnuNewChess},
                   {Qt::Key_F1, Qt::ShiftModifier, "1newc", frmChess->mnuNewCheckers}};
  for (const auto& shortcut : shortcuts) {
    QTest::keyClick(MainWindow(), shortcut.key, shortcut.modifier);
    EXPECT_EQ(Sent(), shortcut.sent);
  }
  EXPECT_TRUE(frmChess->txtIn.Text == "half a line" && frmChess->txtIn.SelLength() == 11 && Log().empty());
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "before");
  for (const auto& shortcut : shortcuts) {
    frmChess->coordinates.cmdShowCoord.SetFocus();
    shortcut.item.Click();
    EXPECT_TRUE(ChatHasFocus()) << shortcut.sent;
  }
  QTest::keyClick(MainWindow(), Qt::Key_S, Qt::ControlModifier);
  EXPECT_TRUE(frmShowMove.Loaded() && !frmChess->Enabled());
}

TEST_F(Chat, ComplainsOfNothingWithoutASoundCard) {
  frmChess->mnuPlaySounds.Click();
  testing::internal::CaptureStderr();
  Type("a\r");
  QTest::qWait(20);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace morva
