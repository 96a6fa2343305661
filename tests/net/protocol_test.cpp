#include <algorithm>
#include <random>

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

/// The other side's actions, done on a board of letters and told as messages that end by themselves on the wire.
struct Model {
  std::mt19937 random;
  std::string squares = kStart;
  std::string turn = "you";
  std::size_t history = 0;

  int Below(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }
  char& At(int i) { return squares[static_cast<std::size_t>(i)]; }

  std::string Act() {
    const int square = Below(64);
    switch (const int action = Below(40)) {
      case 0:
        squares = kCheckersStart;
        history = 0;
        return "1newc";
      case 1:
        squares = std::string(64, '.');
        return "1clear";
      case 2: {
        for (char& piece : squares) piece = "defghijklopqrstuv"[Below(17)];
        const std::string line = squares;
        std::replace(squares.begin(), squares.end(), 'd', '.');
        return "1__" + line;
      }
      case 3:
      case 4:
        turn = action == 3 ? "you" : "me";
        return action == 3 ? "me" : "you";
      case 5:
      case 6:
        ++history;
        At(square | 8) = '.';  // 1 to 6 would end with the quiet
        return "3" + std::to_string(square | 8);
      case 7:
      case 8:
      case 9: {
        ++history;
        const int code = Below(9), white = Below(2);
        At(square) = code == 0 ? '.' : static_cast<char>(100 + 10 * white + code);
        return "4" + TwoDigits(square) + std::to_string(code) + (white == 1 ? "16777215" : "0");
      }
      default:
        return Move(square, Below(64));
    }
  }

  std::string Move(int from, int too) {
    turn = "me";
    const char piece = std::exchange(At(from), '.');
    At(too) = from == too ? '.' : piece;
    history += At(too) != '.';
    // Each pawn or checker stands before what it becomes on its far row.
    const std::string far_row = too < 8 ? "otuv" : too > 55 ? "ejkl" : "";
    const std::size_t found = far_row.find(At(too));
    if (found == 0 || found == 2) At(too) = far_row[found + 1];
    return "1" + TwoDigits(from) + TwoDigits(too);
  }
};

TEST_F(Protocol, RandomGamesArriveWholeHoweverTheyAreCut) {
  Sit();
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  Model model{std::mt19937(seed)};
  std::string chat;
  for (int round = 0; round < 60; ++round) {
    std::string bytes;
    for (int message = 0; message < 80; ++message) bytes += model.Act();
    bytes += "0line" + std::to_string(round);
    chat += "\r\n<Bob>  line" + std::to_string(round);
    for (std::size_t at = 0; at < bytes.size();) {
      const int length = model.Below(97) == 0 ? 1000 : model.Below(12) + 1;
      Send(bytes.substr(at, static_cast<std::size_t>(length)));
      at += static_cast<std::size_t>(length);
      if (model.Below(4) == 0) QCoreApplication::processEvents();
    }
    ASSERT_TRUE(Await([&] { return frmChess->txtOut.Text() == chat; })) << frmChess->txtOut.Text();
    ASSERT_EQ(Board(), model.squares);
    ASSERT_EQ(Turn(), model.turn);
    ASSERT_EQ(History().size(), model.history);
  }
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
