#include <QClipboard>

#include "platform/resources.h"
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
  EXPECT_TRUE(Log() == "\r\n<Ann>  well played" && frmChess->txtIn.Text == "" && ChatHasFocus());
  Tell("0you too");
  Type("check\r");  // a canned message to the other side alone
  EXPECT_EQ(Log(), "\r\n<Ann>  well played\r\n<Bob>  you too\r\n<Ann>  check");
  EXPECT_EQ(Sent(), "0well played0check");
  frmChess->txtIn.Text = "a\x01\x7F";
  Type("\r");
  EXPECT_EQ(Sent(), "0a\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_TRUE(Log().ends_with("\r\n<Ann>  a\xEF\xBF\xBD\xEF\xBF\xBD"));
  const std::string before = Log();
  frmChess->cmdShowCoord.SetFocus();
  frmChess->cmdDefault.Click();
  EXPECT_TRUE(Log() == before && ChatHasFocus() && frmChess->cmdDefault.Left() < -9000);
  EXPECT_EQ(Sent(), "");
}

TEST_F(Chat, ClearEmptiesTheLogHereAlone) {
  for (const char* command : {"/clear\r", "/CLEAR\r", "/cLeAr\r"}) {
    Tell("0line");
    Type(command);
    EXPECT_TRUE(Log().empty() && frmChess->txtIn.Text == "" && Sent().empty()) << command;
  }
  for (const std::string line : {" /clear", "/clear ", "/clea", "/clear now"}) {
    Type(line + "\r");
    EXPECT_TRUE(Log().ends_with("\r\n<Ann>  " + line) && Sent() == "0" + line) << line;
  }
}

TEST_F(Chat, TheFocusComesBackToTheLine) {
  Type("half a line");
  frmChess->squ(0).SetFocus();
  QTest::mouseClick(MainWindow(), Qt::LeftButton, {}, At(63) + QPoint(-200, 50));  // on the log
  EXPECT_TRUE(ChatHasFocus() && frmChess->txtIn.SelStart() == 0 && frmChess->txtIn.SelLength() == 11);
  for (Menu* item : {&frmChess->mnuCheck, &frmChess->mnuCheckMate, &frmChess->mnuStaleMate, &frmChess->mnuIWin,
                     &frmChess->mnuWakeUp, &frmChess->mnuNewChess, &frmChess->mnuNewCheckers}) {
    frmChess->cmdShowCoord.SetFocus();
    item->Click();
    EXPECT_TRUE(ChatHasFocus());
  }
  EXPECT_TRUE(frmChess->txtIn.Text == "half a line" && Log().empty() && History().empty());
}

TEST_F(Chat, ShortcutsActInTheMiddleOfALine) {
  Type("half");
  QGuiApplication::clipboard()->setText("before");
  QTest::keyClick(MainWindow(), Qt::Key_Home, Qt::ShiftModifier);
  const struct {
    Qt::Key key;
    Qt::KeyboardModifier modifier;
    const char* sent;
  } shortcuts[] = {{Qt::Key_C, Qt::ControlModifier, "0check"}, {Qt::Key_X, Qt::ControlModifier, "0cmate"},
                   {Qt::Key_Z, Qt::ControlModifier, "0smate"}, {Qt::Key_W, Qt::ControlModifier, "0yours"},
                   {Qt::Key_I, Qt::ControlModifier, "0iwin"},  {Qt::Key_F1, Qt::ControlModifier, "1new"},
                   {Qt::Key_F1, Qt::ShiftModifier, "1newc"}};
  for (const auto& shortcut : shortcuts) {
    QTest::keyClick(MainWindow(), shortcut.key, shortcut.modifier);
    EXPECT_EQ(Sent(), shortcut.sent);
  }
  EXPECT_TRUE(frmChess->txtIn.Text == "half" && frmChess->txtIn.SelLength() == 4);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "before");
  QTest::keyClick(MainWindow(), Qt::Key_S, Qt::ControlModifier);
  EXPECT_TRUE(frmShowMove.Loaded() && !frmChess->Enabled());
}

TEST_F(Chat, SoundsAndBoxesHaveTheirSwitches) {
  for (const auto& [id, bytes] : {std::pair{101, 4282U},
                                  {102, 90090U},
                                  {103, 130002U},
                                  {104, 68456U},
                                  {105, 274412U},
                                  {106, 656868U},
                                  {107, 47034U},
                                  {108, 714U},
                                  {109, 270U}}) {
    EXPECT_EQ(LoadResData(id, "CUSTOM").size(), bytes + 44) << id;
  }
  EXPECT_TRUE(LoadResData(110, "CUSTOM").empty() && LoadResData(101, "WAVE").empty());
  frmChess->mnuPlaySounds.Click();
  EXPECT_TRUE(frmChess->mnuPlaySounds.Checked());
  testing::internal::CaptureStderr();
  for (const int id : {101, 102, 103, 104, 105, 106, 107, 108, 109, 100, -1}) frmChess->PlayResourceSound(id);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  BoxUser user;
  for (int time = 0; time < 2; ++time) {
    frmChess->mnuAcceptMessages.Click();
    Tell("0check");
  }
  EXPECT_EQ(user.boxes.size(), 1U);
}

}  // namespace
}  // namespace morva
