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
  frmChess->mnuPlaySounds.Click();
  testing::internal::CaptureStderr();
  Type("well played\r");
  QTest::qWait(20);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "without a sound card it is silent";
  EXPECT_TRUE(frmChess->txtIn.Text == "" && ChatHasFocus());
  Tell("0you too");
  Type("check\r");  // a canned message to the other side alone
  EXPECT_EQ(Log(), "\r\n<Ann>  well played\r\n<Bob>  you too\r\n<Ann>  check");
  EXPECT_EQ(Sent(), "0well played0check");
  const std::pair<std::string, std::string> lines[] = {{"a\x01\x7F", "a\xEF\xBF\xBD\xEF\xBF\xBD"},
                                                       {" /clear", " /clear"},
                                                       {"/clear ", "/clear "},
                                                       {"/clea", "/clea"},
                                                       {"/clear now", "/clear now"},
                                                       {std::string(40000, 'x'), std::string(40000, 'x')}};
  for (const auto& [line, sent] : lines) {
    frmChess->txtIn.Text = line;
    Type("\r");
    EXPECT_TRUE(Log().ends_with("\r\n<Ann>  " + sent) && Sent() == "0" + sent) << line.substr(0, 99);
  }
  frmChess->txtIn.Text = "J\xC3\xB6rg";
  Type("\r");
  EXPECT_EQ(Sent(), "0J\xF6rg");
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
  FrmChess& game = *frmChess;
  Type("half a line");
  QGuiApplication::clipboard()->setText("before");
  game.squ(0).SetFocus();
  QTest::mouseClick(MainWindow(), Qt::LeftButton, {}, At(63) + QPoint(-200, 50));  // on the log
  EXPECT_TRUE(ChatHasFocus() && Selected(game.txtIn) == "half a line");
  const std::tuple<Qt::Key, Qt::KeyboardModifier, const char*, Menu&> shortcuts[] = {
      {Qt::Key_C, Qt::ControlModifier, "0check", game.mnuCheck},
      {Qt::Key_X, Qt::ControlModifier, "0cmate", game.mnuCheckMate},
      {Qt::Key_Z, Qt::ControlModifier, "0smate", game.mnuStaleMate},
      {Qt::Key_W, Qt::ControlModifier, "0yours", game.mnuWakeUp},
      {Qt::Key_I, Qt::ControlModifier, "0iwin", game.mnuIWin},
      {Qt::Key_F1, Qt::ControlModifier, "1new", game.mnuNewChess},
      {Qt::Key_F1, Qt::ShiftModifier, "1newc", game.mnuNewCheckers}};
  for (const auto& [key, modifier, sent, item] : shortcuts) {
    for (int press = 0; press < 2; ++press) Key(key, modifier);  // each of them is a message
    EXPECT_EQ(Sent(), std::string(sent) + sent);
  }
  EXPECT_TRUE(Selected(game.txtIn) == "half a line" && Log().empty());
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "before");
  for (const auto& [key, modifier, sent, item] : shortcuts) {
    game.coordinates.cmdShowCoord.SetFocus();
    item.Click();
    EXPECT_TRUE(ChatHasFocus()) << sent;
  }
  Key(Qt::Key_S, Qt::ControlModifier);
  EXPECT_TRUE(frmShowMove.Loaded() && !game.Enabled());
}

}  // namespace
}  // namespace morva
