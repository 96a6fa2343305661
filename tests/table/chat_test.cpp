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
  static void Enter() { QTest::keyClick(MainWindow(), Qt::Key_Return); }
  static std::string Log() { return frmChess->txtOut.Text(); }

  static void ExpectIdle() {
    EXPECT_EQ(frmChess->txtIn.Text(), "");
    EXPECT_EQ(Focused(), &frmChess->txtIn);
  }
};

TEST_F(Chat, LinesGoToTheLogAndOut) {
  EXPECT_EQ(Log(), "");
  Type("well played");
  Enter();
  EXPECT_EQ(Log(), "\r\n<Ann>  well played");
  ExpectIdle();
  Tell("0you too");
  Type("check");  // looks like a canned message to the other side alone
  Enter();
  EXPECT_EQ(Log(), "\r\n<Ann>  well played\r\n<Bob>  you too\r\n<Ann>  check");
  EXPECT_EQ(Sent(), "0well played0check");
  frmChess->txtIn.Text = "a\x01\tb\x7F";
  Enter();
  EXPECT_EQ(Sent(), "0a\xEF\xBF\xBD\xEF\xBF\xBD" "b\xEF\xBF\xBD");
  EXPECT_TRUE(Log().ends_with("\r\n<Ann>  a\xEF\xBF\xBD\xEF\xBF\xBD" "b\xEF\xBF\xBD"));
}

TEST_F(Chat, ClearEmptiesTheLogHereAlone) {
  for (const char* command : {"/clear", "/CLEAR", "/cLeAr"}) {
    Tell("0line");
    Type(command);
    Enter();
    EXPECT_EQ(Log(), "") << command;
    ExpectIdle();
  }
  EXPECT_EQ(Sent(), "");
  for (const char* no_command : {" /clear", "/clear ", "/clea", "/clear now"}) {
    Type(no_command);
    Enter();
    EXPECT_TRUE(Log().ends_with(std::string("\r\n<Ann>  ") + no_command));
    EXPECT_EQ(Sent(), std::string("0") + no_command);
  }
}

TEST_F(Chat, EnterOnAnEmptyLineOnlyGivesTheFocusBack) {
  frmChess->cmdShowCoord.SetFocus();
  frmChess->cmdDefault.Click();
  ExpectIdle();
  Enter();
  EXPECT_EQ(Log(), "");
  EXPECT_EQ(Sent(), "");
  EXPECT_LT(frmChess->cmdDefault.Left(), -9000);
}

TEST_F(Chat, TheLogHandsTheFocusOnAndSelectsTheLine) {
  Type("half a line");
  frmChess->squ(0).SetFocus();
  const QWidget* log = frmChess->txtOut.Native();
  QTest::mouseClick(MainWindow(), Qt::LeftButton, {}, log->mapTo(frmChess->Native(), QPoint(50, 20)));
  EXPECT_EQ(Focused(), &frmChess->txtIn);
  EXPECT_TRUE(frmChess->txtIn.SelStart() == 0 && frmChess->txtIn.SelLength() == 11);
  Type("x");
  EXPECT_EQ(frmChess->txtIn.Text(), "x");
}

TEST_F(Chat, CannedMessagesLeaveNoLineAndKeepTheText) {
  Type("half");
  for (Menu* item : {&frmChess->mnuCheck, &frmChess->mnuCheckMate, &frmChess->mnuStaleMate, &frmChess->mnuIWin,
                     &frmChess->mnuWakeUp}) {
    frmChess->cmdShowCoord.SetFocus();
    item->Click();
    EXPECT_EQ(Focused(), &frmChess->txtIn);
  }
  EXPECT_EQ(frmChess->txtIn.Text(), "half");
  EXPECT_EQ(Log(), "");
  EXPECT_TRUE(History().empty());
}

TEST_F(Chat, ShortcutsActInTheMiddleOfALine) {
  Type("half");
  QGuiApplication::clipboard()->setText("before");
  QTest::keyClick(MainWindow(), Qt::Key_Home, Qt::ShiftModifier);
  const std::pair<Qt::Key, const char*> shortcuts[] = {{Qt::Key_C, "0check"}, {Qt::Key_X, "0cmate"},
                                                       {Qt::Key_Z, "0smate"}, {Qt::Key_W, "0yours"},
                                                       {Qt::Key_I, "0iwin"}};
  for (const auto& [key, sent] : shortcuts) {
    QTest::keyClick(MainWindow(), key, Qt::ControlModifier);
    EXPECT_EQ(Sent(), sent);
  }
  QTest::keyClick(MainWindow(), Qt::Key_F1, Qt::ControlModifier);
  EXPECT_EQ(Sent(), "1new");
  QTest::keyClick(MainWindow(), Qt::Key_F1, Qt::ShiftModifier);
  EXPECT_EQ(Sent(), "1newc");
  EXPECT_EQ(frmChess->txtIn.Text(), "half");
  EXPECT_EQ(frmChess->txtIn.SelLength(), 4);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "before");
  QTest::keyClick(MainWindow(), Qt::Key_S, Qt::ControlModifier);
  EXPECT_TRUE(frmShowMove.Loaded() && !frmChess->Enabled());
}

TEST_F(Chat, SoundsAndMessagesHaveTheirSwitches) {
  const auto stored = [](int id) { return LoadResData(id, "CUSTOM").size(); };
  for (const auto& [id, bytes] : {std::pair{101, 4282U}, {102, 90090U}, {103, 130002U}, {104, 68456U}, {105, 274412U},
                                  {106, 656868U}, {107, 47034U}, {108, 714U}, {109, 270U}}) {
    EXPECT_EQ(stored(id), bytes + 44) << id;
  }
  EXPECT_EQ(stored(100) + stored(110) + LoadResData(101, "WAVE").size(), 0U);

  EXPECT_FALSE(frmChess->mnuPlaySounds.Checked());
  frmChess->mnuPlaySounds.Click();
  EXPECT_TRUE(frmChess->mnuPlaySounds.Checked());
  testing::internal::CaptureStderr();
  for (const int id : {101, 102, 103, 104, 105, 106, 107, 108, 109, 100, -1, 32767}) frmChess->PlayResourceSound(id);
  Type("ab");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_TRUE(frmChess->mnuAcceptMessages.Checked());
  frmChess->mnuAcceptMessages.Click();
  BoxUser user;
  Tell("0check");
  frmChess->mnuAcceptMessages.Click();
  EXPECT_TRUE(user.boxes.empty());
  Tell("0check");
  EXPECT_EQ(user.boxes.size(), 1U);
}

}  // namespace
}  // namespace morva
