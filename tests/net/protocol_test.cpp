#include <QElapsedTimer>
#include <algorithm>
#include <fstream>
#include <random>

#include "tests/game.h"

namespace morva {
namespace {

class Protocol : public GameTest {
 protected:
  static std::string Chat() { return frmChess->txtOut.Text(); }
  std::string Arrived() { return arrived_ += peer_->readAll().toStdString(); }

  std::string arrived_;  ///< all that the peer has got
};

TEST_F(Protocol, WelcomeAsksForANickAndAGuestForAnAddress) {
  FrmWelcome& welcome = *frmWelcome;
  welcome.Show();
  EXPECT_TRUE(welcome.rdoGuest.Value() && welcome.cmdGo.Caption() == "Connect" && welcome.txtHost.Enabled());
  EXPECT_EQ(welcome.ScaleHeight(), 2130);
  BoxUser user;
  welcome.txtNick.Text = "";
  QTest::keyClick(welcome.txtHost.Native(), Qt::Key_Return);
  EXPECT_EQ(user.boxes, Lines{"Oops|Please enter your nickname|3"});
  EXPECT_EQ(welcome.Native()->focusWidget(), welcome.txtNick.Native());
  welcome.txtNick.Text = " ";
  QTest::mouseClick(welcome.cmdGo.Native(), Qt::LeftButton);
  EXPECT_EQ(user.boxes.back(), "Oops|Please enter host IP|3");
  EXPECT_EQ(welcome.Native()->focusWidget(), welcome.txtHost.Native());
  QTest::keyClicks(welcome.txtHost.Native(), "10.0.0.1");
  welcome.SetFocus();
  ASSERT_TRUE(QTest::qWaitForWindowActive(welcome.Native()));
  welcome.txtNick.SetFocus();
  welcome.txtHost.SetFocus();
  EXPECT_TRUE(welcome.txtHost.SelStart() == 0 && welcome.txtHost.SelLength() == 8);

  welcome.rdoHost.Value = true;
  EXPECT_TRUE(welcome.cmdGo.Caption() == "Listen" && !welcome.txtHost.Enabled() && welcome.ScaleHeight() == 1665);
  welcome.rdoGuest.Value = true;
  EXPECT_EQ(welcome.txtHost.Text(), "10.0.0.1");
  EXPECT_FALSE(frmControl.Loaded());
  welcome.rdoHost.Value = true;
  welcome.txtHost.Text = "";
  QTest::mouseClick(welcome.cmdGo.Native(), Qt::LeftButton);
  EXPECT_EQ(user.boxes.size(), 2U);
  ASSERT_TRUE(frmControl.Loaded() && !frmWelcome.Loaded());
  EXPECT_TRUE(frmControl->Mode == "server" && frmControl->Nick == " " && frmControl->Host.empty());
}

TEST_F(Protocol, AGuestSaysItsNickAtOnce) {
  Join();
  EXPECT_TRUE(Await([this] { return Arrived() == "2Ann"; })) << arrived_;
  EXPECT_TRUE(!frmControl->Enabled() && std::abs(frmControl->Top() + 10000) < 15 && !frmControl->Native()->isVisible());
  EXPECT_TRUE(frmChess->Native()->isVisible() && frmToolWindow->Native()->isVisible());
  EXPECT_EQ(Turn(), "you");
  EXPECT_TRUE(frmToolWindow->lblNick.Caption().empty() && frmChess->Nick == "Ann");
  Send("2Bob");
  EXPECT_TRUE(Await([] { return frmToolWindow->lblOpNick.Caption() == "Bob"; }));
  EXPECT_EQ(frmToolWindow->lblNick.Caption(), "Ann");
  EXPECT_TRUE(frmToolWindow->lshape.BackColor() == kBlack && frmToolWindow->rshape.BackColor() == kWhite);
  EXPECT_EQ(Arrived(), "2Ann");
}

TEST_F(Protocol, AHostAnswersTheFirstTextAndServesNobodyElse) {
  Host();
  EXPECT_EQ(frmControl->Caption(), "Hosting game");
  EXPECT_EQ(frmControl->lblStat.Caption(), "Waiting for guest to connect to " + frmControl->tcp.LocalIP() + " . . .");
  QTcpSocket second;
  QTest::qWait(50);
  second.connectToHost(QHostAddress::LocalHost, kPort);
  EXPECT_TRUE(Await([&] { return second.error() == QAbstractSocket::ConnectionRefusedError; }));
  EXPECT_EQ(Arrived(), "");
  EXPECT_TRUE(frmControl->Enabled() && frmControl->Native()->isVisible() && !frmChess.Loaded());

  Send("2Bob");
  EXPECT_TRUE(Await([this] { return Arrived() == "2Ann"; })) << arrived_;
  EXPECT_TRUE(Await([] { return frmChess->OpNick == "Bob"; }));
  EXPECT_TRUE(frmToolWindow->lblNick.Caption() == "Ann" && frmToolWindow->lblOpNick.Caption() == "Bob");
  EXPECT_TRUE(!frmControl->Enabled() && std::abs(frmControl->Top() + 10000) < 15 && !frmControl->Native()->isVisible());
  EXPECT_EQ(Turn(), "me");
  EXPECT_TRUE(frmToolWindow->lshape.BackColor() == kWhite && frmToolWindow->rshape.BackColor() == kBlack);
  Send("2Rob");
  EXPECT_TRUE(Await([] { return frmChess->OpNick == "Rob"; }));
  EXPECT_EQ(Arrived(), "2Ann");
}

TEST_F(Protocol, WithoutAHostTheStatusStaysAndCancelEnds) {
  GoAsGuest();
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
  EXPECT_THROW(GoAsHost(), Ended);
  ASSERT_EQ(user.boxes.size(), 1U);
  EXPECT_NE(user.boxes[0].find("port 2948 is taken"), std::string::npos);
}

TEST_F(Protocol, TheEndIsToldAfterTheLastMessages) {
  Join();
  frmChess->mnuPlaySounds.Checked = false;
  Send("2<b>Bob</b>");
  ASSERT_TRUE(Await([] { return !frmChess->OpNick.empty(); }));
  std::string seen;
  BoxUser user(QMessageBox::No, [&] { seen = Board().substr(36, 1) + Chat(); });
  Send("15236");
  Send("0good bye");
  peer_->disconnectFromHost();
  EXPECT_TRUE(Await([this] { return ended_ == 1; }));
  EXPECT_EQ(user.boxes, Lines{"Morva|<b>Bob</b> has left. Do you want to save the game?|2"});
  EXPECT_EQ(seen, "o\r\n<<b>Bob</b>>  good bye");
}

TEST_F(Protocol, AGuestThatLeavesWithoutAWordEndsTheHostToo) {
  int asked = 0;
  frmChess.made = [&](FrmChess& window) { window.mnuSaveGame.Click = [&asked] { ++asked; }; };
  BoxUser user(QMessageBox::Yes);
  Host();
  QTest::qWait(20);
  peer_->abort();
  EXPECT_TRUE(Await([this] { return ended_ == 1; }));
  EXPECT_EQ(user.boxes, Lines{"Morva| has left. Do you want to save the game?|2"});
  EXPECT_EQ(asked, 1);
  frmChess.made = nullptr;
}

TEST_F(Protocol, EachActionSendsOneMessage) {
  Sit();
  frmToolWindow->highlight("me");
  const auto click = [](Control& control) { QTest::mouseClick(control.Native(), Qt::LeftButton); };
  const auto type = [](const char* line) {
    QTest::keyClicks(frmChess->txtIn.Native(), line);
    QTest::keyClick(frmChess->txtIn.Native(), Qt::Key_Return);
  };
  const auto middle = [](int square) { QTest::mouseClick(MainWindow(), Qt::MiddleButton, {}, At(square)); };
  const auto change = [](int square, auto answer) {
    QTest::mouseClick(MainWindow(), Qt::RightButton, {}, At(square));
    ASSERT_TRUE(frmChange.Loaded());
    answer();
  };
  const std::pair<const char*, std::function<void()>> actions[] = {
      {"15236", [] { Drag(52, 36); }},
      {"10816", [] { Drag(8, 16); }},
      {"", [] { Drag(57, 36); }},
      {"", [] { QTest::mouseClick(MainWindow(), Qt::LeftButton, {}, At(0)); }},
      {"13333", [] { QTest::mouseClick(MainWindow(), Qt::LeftButton, {}, At(33)); }},
      {"me", [&] { middle(36); }},
      {"you", [&] { middle(33); }},
      {"me", [&] { click(frmToolWindow->lblNick); }},
      {"you", [&] { click(frmToolWindow->lblOpNick); }},
      {"4361"
       "16777215",
       [&] {
         change(36, [&] {
           frmChange->rdo(1).Value = true;
           click(frmChange->cmdOk);
         });
       }},
      {"40630",
       [&] {
         change(6, [&] {
           frmChange->rdo(3).Value = true;
           click(frmChange->cmdOk);
         });
       }},
      {"37", [&] { change(7, [&] { click(frmChange->cmdTrash); }); }},
      {"363", [&] { change(63, [&] { click(frmChange->cmdTrash); }); }},
      {"", [&] { change(62, [&] { click(frmChange->cmdCancel); }); }},
      {"0check", [] { frmChess->mnuCheck.Click(); }},
      {"0cmate", [] { frmChess->mnuCheckMate.Click(); }},
      {"0smate", [] { frmChess->mnuStaleMate.Click(); }},
      {"0iwin", [] { frmChess->mnuIWin.Click(); }},
      {"0yours", [] { frmChess->mnuWakeUp.Click(); }},
      {"0me", [&] { type("me"); }},
      {"0J\xF6rg",
       [] {
         frmChess->txtIn.Text = "J\xC3\xB6rg";
         QTest::keyClick(frmChess->txtIn.Native(), Qt::Key_Return);
       }},
      {"", [&] { type(""); }},
      {"", [&] { type("/CLEAR"); }},
      {"1new", [] { frmChess->mnuNewChess.Click(); }},
      {"1newc", [] { frmChess->mnuNewCheckers.Click(); }},
      {"1clear", [] { frmChess->mnuClear.Click(); }},
      {"", [] { frmChess->mnuShowLast.Click(); }},
  };
  for (const auto& [bytes, act] : actions) {
    act();
    EXPECT_EQ(Sent(), bytes);
  }
}

TEST_F(Protocol, ALineBehindALineIsAMessageOfItsOwn) {
  Sit();
  const auto wait = [this](const char* bytes) {
    return Await([&] { return (arrived_ += peer_->readAll().toStdString()) == bytes; });
  };
  frmChess->mnuCheck.Click();
  frmChess->mnuCheck.Click();
  EXPECT_TRUE(wait("0check"));
  QElapsedTimer clock;
  clock.start();
  EXPECT_TRUE(wait("0check0check"));
  EXPECT_GE(clock.elapsed(), 40);
}

/// What the other side's actions make of a board, told without the program.
struct Model {
  std::string squares = kStart;
  std::string turn = "you";
  std::size_t history = 0;

  static bool White(char piece) { return piece >= 'n'; }
  char& At(int i) { return squares[static_cast<std::size_t>(i)]; }

  void Move(int from, int too) {
    const char piece = At(from);
    At(from) = '.';
    At(too) = from == too ? '.' : piece;
    if (At(too) != '.') {
      ++history;
      if (too < 8 && (piece == 'o' || piece == 'u')) At(too) = piece == 'o' ? 't' : 'v';
      if (too > 55 && (piece == 'e' || piece == 'k')) At(too) = piece == 'e' ? 'j' : 'l';
    }
    turn = "me";
  }
  void Put(int i, char piece) {
    At(i) = piece;
    ++history;
  }
};

/// One action of the other side, done on the model and told as a message. It ends by itself on the wire.
std::string Act(Model& model, std::mt19937& random) {
  const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  const int square = below(64);
  switch (below(40)) {
    case 0:
      model.squares = kCheckersStart;
      model.history = 0;
      return "1newc";
    case 1:
      model.squares = std::string(64, '.');
      return "1clear";
    case 2: {
      std::string line;
      for (char& piece : model.squares) {
        line += "defghijklnopqrstuv"[below(18)];
        piece = line.back() == 'd' || line.back() == 'n' ? '.' : line.back();
      }
      return "1__" + line;
    }
    case 3:
      model.turn = "you";
      return "me";
    case 4:
      model.turn = "me";
      return "you";
    case 5:
    case 6: {
      const int trashed = square > 0 && square < 7 ? square + 9 : square;
      model.Put(trashed, '.');
      return "3" + std::to_string(trashed);
    }
    case 7:
    case 8:
    case 9: {
      const int code = below(9);
      const bool white = below(2) == 1;
      model.Put(square, code == 0 ? '.' : static_cast<char>((white ? 110 : 100) + code));
      return "4" + TwoDigits(square) + std::to_string(code) + (white ? "16777215" : "0");
    }
    default: {
      const int too = below(64);
      model.Move(square, too);
      return "1" + TwoDigits(square) + TwoDigits(too);
    }
  }
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
    ASSERT_TRUE(Await([&] { return Chat() == chat; })) << Chat();
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
  constexpr qint64 kFlood = 64 << 20;
  std::string passes;
  while (passes.size() < 1 << 16) passes += "13333";
  int ticks = 0;
  QTimer clock;
  QObject::connect(&clock, &QTimer::timeout, [&] { ++ticks; });
  clock.start(10);
  const std::size_t before = ResidentBytes();
  QElapsedTimer time;
  time.start();
  qint64 written = 0;
  for (bool typed = false; time.elapsed() < 1500;) {
    while (peer_->bytesToWrite() < 1 << 20 && written < kFlood) {
      Send(passes);
      written += static_cast<qint64>(passes.size());
    }
    QTest::qWait(1);
    if (!typed && time.elapsed() > 500) {
      QTest::keyClicks(frmChess->txtIn.Native(), "hi");
      typed = true;
    }
  }
  EXPECT_GT(peer_->bytesToWrite(), 0);
  EXPECT_LT(written, kFlood);
  EXPECT_LT(ResidentBytes(), before + (100U << 20));
  EXPECT_GT(ticks, 10);
  EXPECT_EQ(frmChess->txtIn.Text(), "hi");
  EXPECT_TRUE(frmChess->i1 == 33 && History().empty());
}

}  // namespace
}  // namespace morva
