#include <chrono>
#include <ctime>
#include <thread>

#include "tests/game.h"

namespace morva {
namespace {

using Protocol = GameTest;

TEST_F(Protocol, WelcomeAsksForANickAndAGuestForAnAddress) {
  FrmWelcome& welcome = *frmWelcome;
  welcome.Show();
  BoxUser user;
  welcome.txtNick.Text = "";
  QTest::keyClick(welcome.txtHost.Native(), Qt::Key_Return);
  EXPECT_EQ(welcome.Native()->focusWidget(), welcome.txtNick.Native());
  welcome.txtNick.Text = " ";
  welcome.cmdGo.Click();
  EXPECT_EQ(welcome.Native()->focusWidget(), welcome.txtHost.Native());
  EXPECT_EQ(user.boxes, (Lines{"Oops|Please enter your nickname|3", "Oops|Please enter host IP|3"}));
  ASSERT_TRUE(QTest::qWaitForWindowActive(welcome.Native()));
  welcome.txtHost.Text = "10.0.0.1";
  welcome.txtNick.SetFocus();
  EXPECT_EQ(Selected(welcome.txtNick), " ");
  welcome.txtHost.SetFocus();
  EXPECT_EQ(Selected(welcome.txtHost), "10.0.0.1");
  for (OptionButton* option : {&welcome.rdoHost, &welcome.rdoGuest}) option->Value = true;
  EXPECT_TRUE(welcome.cmdGo.Caption() == "Connect" && welcome.txtHost.Enabled() && welcome.ScaleHeight() == 2130);
  EXPECT_EQ(welcome.txtHost.Text(), "10.0.0.1");
  welcome.rdoHost.Value = true;
  welcome.txtHost.Text = "";
  welcome.cmdGo.Click();
  ASSERT_TRUE(frmControl.Loaded() && !frmWelcome.Loaded());
  EXPECT_TRUE(frmControl->Mode == "server" && frmControl->Nick == " " && frmControl->Host.empty());
}

TEST_F(Protocol, AGuestSaysItsNickAtOnce) {
  Join();
  EXPECT_EQ(frmControl->lblStat.Caption(), "Connecting to host computer . . .");
  EXPECT_TRUE(Sent() == "2Ann" && frmToolWindow->lblNick.Caption().empty());
  Send("2Bob");
  EXPECT_TRUE(Await([] { return frmChess->OpNick == "Bob"; }));
  EXPECT_TRUE(Turn() == "you" && frmToolWindow->lshape.BackColor() == kBlack && Sent().empty());
}

TEST_F(Protocol, AnAddressMayStandInBrackets) {
  const bool six = server_.listen(QHostAddress::LocalHostIPv6, kPort);  // not every computer has it
  ASSERT_TRUE(six || server_.listen(QHostAddress::LocalHost, kPort));
  Go("guest", six ? "[::1]" : "[127.0.0.1]");
  EXPECT_TRUE(Await([] { return frmChess.Loaded(); }));
}

TEST_F(Protocol, AHostAnswersTheFirstTextAndServesNobodyElse) {
  Go("host");
  EXPECT_EQ(frmControl->lblStat.Caption(), "Waiting for guest to connect to " + frmControl->tcp.LocalIP() + " . . .");
  peer_ = std::make_unique<QTcpSocket>();
  peer_->connectToHost(QHostAddress::LocalHost, kPort);
  ASSERT_TRUE(Await([this] { return peer_->state() == QAbstractSocket::ConnectedState; }));
  QTest::qWait(50);
  QTcpSocket second;
  second.connectToHost(QHostAddress::LocalHost, kPort);
  EXPECT_TRUE(Await([&] { return second.error() == QAbstractSocket::ConnectionRefusedError; }));
  EXPECT_TRUE(peer_->bytesAvailable() == 0 && frmControl->Native()->isVisible() && !frmChess.Loaded());
  for (const std::string nick : {"Rob", "Bob"}) {
    Send("2" + nick);
    EXPECT_TRUE(Await([&] { return frmChess.Loaded() && frmChess->OpNick == nick; }));
  }
  const FrmToolWindow& tools = *frmToolWindow;
  EXPECT_TRUE(!frmControl->Enabled() && frmControl->Top() < -9900 && frmChess->Native()->isVisible());
  EXPECT_TRUE(tools.lblNick.Caption() == "Ann" && tools.lblOpNick.Caption() == "Bob" && Turn() == "me");
  EXPECT_TRUE(tools.lshape.BackColor() == kWhite && tools.rshape.BackColor() == kBlack && Sent() == "2Ann");
}

TEST_F(Protocol, ATakenPortIsToldAndEnds) {
  ASSERT_TRUE(server_.listen(QHostAddress::Any, kPort));
  BoxUser user;
  EXPECT_THROW(Go("host"), Ended);
  EXPECT_TRUE(user.boxes.size() == 1 && user.boxes[0].find("port 2948 is taken") != std::string::npos);
}

TEST_F(Protocol, TheEndIsToldAfterTheLastMessages) {
  Join();
  std::string seen;
  frmChess->mnuSaveGame.Click = [&seen] { seen += ", saved"; };
  BoxUser user(QMessageBox::Yes, [&] { seen = Board().substr(36, 1) + frmChess->txtOut.Text(); });
  for (const char* message : {"2<b>Bob</b>", "15236", "0good bye"}) {
    Send(message);
    QTest::qWait(60);
  }
  for (int line = 0; line < 100; ++line) Transmit("nobody is left to hear it", kWords);
  peer_->disconnectFromHost();
  EXPECT_TRUE(Await([this] { return ended_ == 1; }));
  EXPECT_EQ(user.boxes, Lines{"Morva|<b>Bob</b> has left. Do you want to save the game?|2"});
  EXPECT_EQ(seen, "o\r\n<<b>Bob</b>>  good bye, saved");
}

// Those of the menu, of drags and of the change dialog are looked at with what else they do.
TEST_F(Protocol, EachActionSendsOneMessage) {
  Sit();
  const std::tuple<Control&, Qt::MouseButton, const char*> clicks[] = {
      {frmChess->squ(36), Qt::MiddleButton, "me"},
      {frmChess->squ(0), Qt::MiddleButton, "you"},
      {frmChess->squ(0), Qt::LeftButton, ""},
      {frmToolWindow->lblNick, Qt::LeftButton, "me"},
      {frmToolWindow->lblOpNick, Qt::LeftButton, "you"}};
  for (const auto& [control, button, bytes] : clicks) {
    QTest::mouseClick(control.Native(), button);
    EXPECT_EQ(Sent(), bytes);
  }
  frmChess->mnuClear.Click();
  EXPECT_EQ(Sent(), "1clear");
}

TEST_F(Protocol, ABusyWindowMergesNothing) {
  Sit();
  for (const char* message : {"0hello", "15236", "0a", "37", "0b"}) {
    Send(message);
    std::this_thread::sleep_for(std::chrono::milliseconds(60));  // meanwhile the window does something else
  }
  EXPECT_TRUE(Await([] { return frmChess->txtOut.Text() == "\r\n<Bob>  hello\r\n<Bob>  a\r\n<Bob>  b"; }));
  EXPECT_EQ(History().size(), 2U);
}

// The share of a processor that the program takes while its window does nothing.
double Busy() {
  std::this_thread::sleep_for(std::chrono::milliseconds(350));  // whatever ends by a pause has ended then
  const std::clock_t before = std::clock();
  std::this_thread::sleep_for(std::chrono::milliseconds(400));
  return static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC / 0.4;
}

TEST_F(Protocol, AConnectionThatMayNotReadOrCanNotWriteTakesNoProcessorTime) {
  Sit();
  std::string moves_and_a_part;
  while (moves_and_a_part.size() < 1 << 16) moves_and_a_part += "13333";
  Send(moves_and_a_part += "13");
  EXPECT_LT(Busy(), 0.02) << "more has arrived than the window takes";
  ASSERT_TRUE(Await([] { return frmChess->i1 == 33; }));
  peer_->setReadBufferSize(1);
  frmControl->tcp.SendData("0" + std::string(32 << 20, 'x'));
  QTest::qWait(300);
  Send("13");
  QTest::qWait(50);
  Unload(frmChess);
  EXPECT_LT(Busy(), 0.02) << "the program has ended, and the other side takes nothing";
}

TEST_F(Protocol, AFloodWaitsAtTheSenderAndLeavesTheWindowAlive) {
  Sit();
  std::string passes;
  while (passes.size() < 1 << 16) passes += "13333";
  int ticks = 0;
  Timer clock(15);
  clock.Tick = [&] { ++ticks; };
  std::size_t written = 0;
  QElapsedTimer time;
  for (time.start(); time.elapsed() < 1500; QTest::qWait(1)) {
    while (peer_->bytesToWrite() < 1 << 20 && written < 64U << 20) {
      Send(passes);
      written += passes.size();
    }
  }
  EXPECT_TRUE(peer_->bytesToWrite() > 0 && written < 64U << 20) << written;
  EXPECT_GT(ticks, 10);
  EXPECT_TRUE(frmChess->i1 == 33 && History().empty());
}

}  // namespace
}  // namespace morva
