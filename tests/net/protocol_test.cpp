#include <chrono>
#include <thread>

#include "tests/game.h"

namespace morva {
namespace {

class Protocol : public GameTest {
 protected:
  static void ExpectTable(const char* turn, Color mine) {
    EXPECT_TRUE(!frmControl->Enabled() && frmControl->Top() < -9900 && !frmControl->Native()->isVisible());
    EXPECT_TRUE(frmChess->Native()->isVisible() && frmToolWindow->Native()->isVisible());
    EXPECT_TRUE(frmToolWindow->lblNick.Caption() == "Ann" && frmToolWindow->lblOpNick.Caption() == "Bob");
    EXPECT_TRUE(frmToolWindow->lshape.BackColor() == mine && frmToolWindow->rshape.BackColor() == kWhite - mine);
    EXPECT_EQ(Turn(), turn);
  }
};

TEST_F(Protocol, WelcomeAsksForANickAndAGuestForAnAddress) {
  FrmWelcome& welcome = *frmWelcome;
  welcome.Show();
  EXPECT_TRUE(welcome.cmdGo.Caption() == "Connect" && welcome.ScaleHeight() == 2130);
  BoxUser user;
  welcome.txtNick.Text = "";
  QTest::keyClick(welcome.txtHost.Native(), Qt::Key_Return);
  EXPECT_EQ(welcome.Native()->focusWidget(), welcome.txtNick.Native());
  welcome.txtNick.Text = " ";
  QTest::mouseClick(welcome.cmdGo.Native(), Qt::LeftButton);
  EXPECT_EQ(welcome.Native()->focusWidget(), welcome.txtHost.Native());
  EXPECT_EQ(user.boxes, (Lines{"Oops|Please enter your nickname|3", "Oops|Please enter host IP|3"}));
  welcome.SetFocus();
  ASSERT_TRUE(QTest::qWaitForWindowActive(welcome.Native()));
  welcome.txtHost.Text = "10.0.0.1";
  welcome.txtNick.SetFocus();
  welcome.txtHost.SetFocus();
  EXPECT_TRUE(welcome.txtHost.SelStart() == 0 && welcome.txtHost.SelLength() == 8);

  welcome.rdoHost.Value = true;
  EXPECT_TRUE(welcome.cmdGo.Caption() == "Listen" && !welcome.txtHost.Enabled() && welcome.ScaleHeight() == 1665);
  welcome.rdoGuest.Value = true;
  EXPECT_TRUE(welcome.txtHost.Text == "10.0.0.1" && welcome.txtHost.Enabled() && !frmControl.Loaded());
  welcome.rdoHost.Value = true;
  welcome.txtHost.Text = "";
  QTest::mouseClick(welcome.cmdGo.Native(), Qt::LeftButton);
  ASSERT_TRUE(frmControl.Loaded() && !frmWelcome.Loaded());
  EXPECT_TRUE(frmControl->Mode == "server" && frmControl->Nick == " " && frmControl->Host.empty());
}

TEST_F(Protocol, AGuestSaysItsNickAtOnce) {
  Join();
  EXPECT_EQ(frmControl->lblStat.Caption(), "Connecting to host computer . . .");
  EXPECT_EQ(Sent(), "2Ann");
  EXPECT_EQ(frmToolWindow->lblNick.Caption(), "");
  Send("2Bob");
  EXPECT_TRUE(Await([] { return frmChess->OpNick == "Bob"; }));
  ExpectTable("you", kBlack);
  EXPECT_EQ(Sent(), "");
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
  EXPECT_TRUE(peer_->bytesAvailable() == 0 && frmControl->Enabled() && frmControl->Native()->isVisible() &&
              !frmChess.Loaded());
  for (const std::string nick : {"Rob", "Bob"}) {
    Send("2" + nick);
    EXPECT_TRUE(Await([&] { return frmChess.Loaded() && frmChess->OpNick == nick; }));
  }
  ExpectTable("me", kWhite);
  EXPECT_EQ(Sent(), "2Ann");
}

TEST_F(Protocol, ATakenPortIsToldAndEnds) {
  ASSERT_TRUE(server_.listen(QHostAddress::Any, kPort));
  BoxUser user;
  EXPECT_THROW(Go("host"), Ended);
  EXPECT_TRUE(user.boxes.size() == 1 && user.boxes[0].find("port 2948 is taken") != std::string::npos);
}

TEST_F(Protocol, TheEndIsToldAfterTheLastMessages) {
  Join();
  Send("2<b>Bob</b>");
  ASSERT_TRUE(Await([] { return !frmChess->OpNick.empty(); }));
  std::string seen;
  frmChess->mnuSaveGame.Click = [&seen] { seen += ", saved"; };
  BoxUser user(QMessageBox::Yes, [&] { seen = Board().substr(36, 1) + frmChess->txtOut.Text(); });
  Send("15236");
  Send("0good bye");
  for (int line = 0; line < 100; ++line) Transmit("nobody is left to hear it", kWords);
  peer_->disconnectFromHost();
  EXPECT_TRUE(Await([this] { return ended_ == 1; }));
  EXPECT_EQ(user.boxes, Lines{"Morva|<b>Bob</b> has left. Do you want to save the game?|2"});
  EXPECT_EQ(seen, "o\r\n<<b>Bob</b>>  good bye, saved");
}

// Those of the menu's shortcuts, of drags and of the change dialog are looked at with what else they do.
TEST_F(Protocol, EachActionSendsOneMessage) {
  Sit();
  const struct {
    Control& control;
    Qt::MouseButton button;
    const char* bytes;
  } clicks[] = {{frmChess->squ(36), Qt::MiddleButton, "me"},
                {frmChess->squ(0), Qt::MiddleButton, "you"},
                {frmChess->squ(0), Qt::LeftButton, ""},
                {frmToolWindow->lblNick, Qt::LeftButton, "me"},
                {frmToolWindow->lblOpNick, Qt::LeftButton, "you"}};
  for (const auto& click : clicks) {
    QTest::mouseClick(click.control.Native(), click.button);
    EXPECT_EQ(Sent(), click.bytes);
  }
  for (const auto& [line, bytes] : {std::pair{"me", "0me"}, {"Jörg", "0J\xF6rg"}, {"♞", "0\xE2\x99\x9E"}, {"", ""}}) {
    frmChess->txtIn.Text = line;
    QTest::keyClick(frmChess->txtIn.Native(), Qt::Key_Return);
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

TEST_F(Protocol, WhatWasSentBeforeLeavingStillArrives) {
  Sit();
  for (const char* line : {"a", "b", "c"}) Transmit(line, kWords);
  Transmit("5236", kBoard);
  Unload(frmChess);
  EXPECT_TRUE(!frmControl.Loaded() && peer_->waitForReadyRead(1000));
  std::string received = peer_->readAll().toStdString();
  EXPECT_EQ(received, "0a") << "the window has gone before the rest was sent";
  EXPECT_TRUE(Await([&] {
    received += peer_->readAll().toStdString();
    return peer_->state() == QAbstractSocket::UnconnectedState;
  }));
  EXPECT_EQ(received, "0a0b0c15236");
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
    if (time.elapsed() > 500 && frmChess->txtIn.Text().empty()) QTest::keyClicks(frmChess->txtIn.Native(), "hi");
  }
  EXPECT_TRUE(peer_->bytesToWrite() > 0 && written < 64U << 20) << written;
  EXPECT_GT(ticks, 10);
  EXPECT_EQ(frmChess->txtIn.Text(), "hi");
  EXPECT_TRUE(frmChess->i1 == 33 && History().empty());
}

}  // namespace
}  // namespace morva
