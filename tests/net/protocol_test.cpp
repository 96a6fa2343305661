#include <QElapsedTimer>
#include <fstream>
#include <random>

#include "tests/game.h"

namespace morva {
namespace {

class Protocol : public GameTest {
 protected:
  /// All that the peer has got.
  std::string Arrived() { return arrived_ += peer_->readAll().toStdString(); }

  static void ExpectTable(const char* turn, Color mine) {
    EXPECT_TRUE(!frmControl->Enabled() && frmControl->Top() < -9900 && !frmControl->Native()->isVisible());
    EXPECT_TRUE(frmChess->Native()->isVisible() && frmToolWindow->Native()->isVisible());
    EXPECT_TRUE(frmToolWindow->lblNick.Caption() == "Ann" && frmToolWindow->lblOpNick.Caption() == "Bob");
    EXPECT_TRUE(frmToolWindow->lshape.BackColor() == mine && frmToolWindow->rshape.BackColor() == kWhite - mine);
    EXPECT_EQ(Turn(), turn);
  }

 private:
  std::string arrived_;
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
  QTest::keyClicks(welcome.txtHost.Native(), "10.0.0.1");
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
  EXPECT_TRUE(Await([this] { return Arrived() == "2Ann"; })) << Arrived();
  EXPECT_EQ(frmToolWindow->lblNick.Caption(), "");
  Send("2Bob");
  EXPECT_TRUE(Await([] { return frmChess->OpNick == "Bob"; }));
  ExpectTable("you", kBlack);
  EXPECT_EQ(Arrived(), "2Ann");
}

TEST_F(Protocol, AHostAnswersTheFirstTextAndServesNobodyElse) {
  Host();
  EXPECT_EQ(frmControl->Caption(), "Hosting game");
  EXPECT_EQ(frmControl->lblStat.Caption(), "Waiting for guest to connect to " + frmControl->tcp.LocalIP() + " . . .");
  QTest::qWait(50);
  QTcpSocket second;
  second.connectToHost(QHostAddress::LocalHost, kPort);
  EXPECT_TRUE(Await([&] { return second.error() == QAbstractSocket::ConnectionRefusedError; }));
  EXPECT_TRUE(Arrived().empty() && frmControl->Enabled() && frmControl->Native()->isVisible() && !frmChess.Loaded());
  for (const std::string nick : {"Rob", "Bob"}) {
    Send("2" + nick);
    EXPECT_TRUE(Await([&] { return frmChess.Loaded() && frmChess->OpNick == nick; }));
  }
  ExpectTable("me", kWhite);
  EXPECT_TRUE(Await([this] { return Arrived() == "2Ann"; })) << Arrived();
}

TEST_F(Protocol, WithoutAHostTheStatusStaysAndCancelEnds) {
  Go("guest");
  QTest::qWait(100);
  EXPECT_EQ(frmControl->Caption(), "Connecting");
  EXPECT_EQ(frmControl->lblStat.Caption(), "Connecting to host computer . . .");
  EXPECT_TRUE(frmControl->Enabled() && !frmChess.Loaded() && ended_ == 0);
  QTest::keyClick(frmControl->Native(), Qt::Key_Escape);
  EXPECT_EQ(ended_, 1);
}

TEST_F(Protocol, ATakenPortIsToldAndEnds) {
  ASSERT_TRUE(server_.listen(QHostAddress::Any, kPort));
  BoxUser user;
  EXPECT_THROW(Go("host"), Ended);
  ASSERT_EQ(user.boxes.size(), 1U);
  EXPECT_NE(user.boxes[0].find("port 2948 is taken"), std::string::npos);
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

TEST_F(Protocol, EachActionSendsOneMessage) {
  Sit();
  frmToolWindow->highlight("me");
  const auto click = [](int square, Qt::MouseButton button) {
    QTest::mouseClick(MainWindow(), button, {}, At(square));
  };
  const auto type = [](const char* line) {
    frmChess->txtIn.Text = line;
    QTest::keyClick(frmChess->txtIn.Native(), Qt::Key_Return);
  };
  FrmChess& game = *frmChess;
  FrmToolWindow& tools = *frmToolWindow;
  const std::pair<const char*, std::function<void()>> actions[] = {
      {"15236", [] { Drag(52, 36); }},
      {"10816", [] { Drag(8, 16); }},
      {"", [] { Drag(57, 36); }},
      {"", [&] { click(0, Qt::LeftButton); }},
      {"13333", [&] { click(33, Qt::LeftButton); }},
      {"me", [&] { click(36, Qt::MiddleButton); }},
      {"you", [&] { click(33, Qt::MiddleButton); }},
      {"me", [&] { QTest::mouseClick(tools.lblNick.Native(), Qt::LeftButton); }},
      {"you", [&] { QTest::mouseClick(tools.lblOpNick.Native(), Qt::LeftButton); }},
      {"0check", game.mnuCheck.Click},
      {"0cmate", game.mnuCheckMate.Click},
      {"0smate", game.mnuStaleMate.Click},
      {"0iwin", game.mnuIWin.Click},
      {"0yours", game.mnuWakeUp.Click},
      {"0me", [&] { type("me"); }},
      {"0J\xF6rg", [&] { type("J\xC3\xB6rg"); }},
      {"0\xE2\x99\x9E", [&] { type("\xE2\x99\x9E"); }},
      {"", [&] { type(""); }},
      {"", [&] { type("/CLEAR"); }},
      {"1new", game.mnuNewChess.Click},
      {"1newc", game.mnuNewCheckers.Click},
      {"1clear", game.mnuClear.Click},
      {"", game.mnuShowLast.Click},
  };
  for (const auto& [bytes, act] : actions) {
    act();
    EXPECT_EQ(Sent(), bytes);
  }
}

/// What the other side's actions make of a board, told without the program.
struct Model {
  std::string squares = kStart;
  std::string turn = "you";
  std::size_t history = 0;

  char& At(int i) { return squares[static_cast<std::size_t>(i)]; }
  void Put(int i, char piece) {
    At(i) = piece;
    ++history;
  }
  void Move(int from, int too) {
    const char piece = std::exchange(At(from), '.');
    At(too) = from == too ? '.' : piece;
    turn = "me";
    if (At(too) == '.') return;
    ++history;
    if (too < 8 && (piece == 'o' || piece == 'u')) At(too) = piece == 'o' ? 't' : 'v';
    if (too > 55 && (piece == 'e' || piece == 'k')) At(too) = piece == 'e' ? 'j' : 'l';
  }
};

/// One action of the other side, done on the model and told as a message. It ends by itself on the wire.
std::string Act(Model& model, std::mt19937& random) {
  const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  const int square = below(64);
  const int action = below(40);
  if (action == 0) {
    model = {kCheckersStart, model.turn, 0};
    return "1newc";
  }
  if (action == 1) {
    model.squares = std::string(64, '.');
    return "1clear";
  }
  if (action == 2) {
    std::string line;
    for (char& piece : model.squares) {
      line += "defghijklnopqrstuv"[below(18)];
      piece = line.back() == 'd' || line.back() == 'n' ? '.' : line.back();
    }
    return "1__" + line;
  }
  if (action < 5) {
    model.turn = action == 3 ? "you" : "me";
    return action == 3 ? "me" : "you";
  }
  if (action < 7) {
    const int trashed = square > 0 && square < 7 ? square + 9 : square;
    model.Put(trashed, '.');
    return "3" + std::to_string(trashed);
  }
  if (action < 10) {
    const int code = below(9), white = below(2);
    model.Put(square, code == 0 ? '.' : static_cast<char>(100 + 10 * white + code));
    return "4" + TwoDigits(square) + std::to_string(code) + (white == 1 ? "16777215" : "0");
  }
  const int too = below(64);
  model.Move(square, too);
  return "1" + TwoDigits(square) + TwoDigits(too);
}

TEST_F(Protocol, RandomGamesArriveWholeHoweverTheyAreCut) {
  Sit();
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  Model model;
  std::string chat;
  for (int round = 0; round < 60; ++round) {
    std::string bytes;
    for (int message = 0; message < 80; ++message) bytes += Act(model, random);
    bytes += "0line" + std::to_string(round);
    chat += "\r\n<Bob>  line" + std::to_string(round);
    for (std::size_t at = 0; at < bytes.size();) {
      const std::size_t length = random() % 97 == 0 ? 1000 : random() % 12 + 1;
      Send(bytes.substr(at, length));
      at += length;
      if (random() % 8 == 0) QCoreApplication::processEvents();
    }
    ASSERT_TRUE(Await([&] { return frmChess->txtOut.Text() == chat; })) << frmChess->txtOut.Text();
    ASSERT_EQ(Board(), model.squares);
    ASSERT_EQ(Turn(), model.turn);
    ASSERT_EQ(History().size(), model.history);
  }
}

std::size_t ResidentBytes() {
  std::ifstream file("/proc/self/statm");
  std::size_t all = 0, resident = 0;
  file >> all >> resident;
  return resident * 4096;
}

TEST_F(Protocol, AFloodWaitsAtTheSenderAndLeavesTheWindowAlive) {
  Sit();
  std::string passes;
  while (passes.size() < 1 << 16) passes += "13333";
  int ticks = 0;
  Timer clock(15);
  clock.Tick = [&] { ++ticks; };
  const std::size_t before = ResidentBytes();
  std::size_t written = 0;
  QElapsedTimer time;
  for (time.start(); time.elapsed() < 1500; QTest::qWait(1)) {
    while (peer_->bytesToWrite() < 1 << 20 && written < 64U << 20) {
      Send(passes);
      written += passes.size();
    }
    if (time.elapsed() > 500 && frmChess->txtIn.Text().empty()) QTest::keyClicks(frmChess->txtIn.Native(), "hi");
  }
  EXPECT_GT(peer_->bytesToWrite(), 0);
  EXPECT_LT(written, 64U << 20);
  EXPECT_LT(ResidentBytes(), before + (100U << 20));
  EXPECT_GT(ticks, 10);
  EXPECT_EQ(frmChess->txtIn.Text(), "hi");
  EXPECT_TRUE(frmChess->i1 == 33 && History().empty());
}

}  // namespace
}  // namespace morva
