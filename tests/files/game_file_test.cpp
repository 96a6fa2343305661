#include <sys/resource.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <csignal>

#include "net/message_reader.h"
#include "net/wire.h"
#include "tests/files/dialogs.h"
#include "tests/files/table_fixture.h"

namespace morva {
namespace {

const std::string kStart =
    "fhgjighfeeeeeeee"
    "dndndndnndndndnddndndndnndndndnd"
    "ooooooooprqtsqrp";

/// The table with somebody on the other side, who writes down what arrives.
class GameFile : public TableTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(other_side_.listen(QHostAddress::LocalHost, kPort)) << "port 2948 is taken";
    TableTest::SetUp();
    ASSERT_TRUE(Await([this] { return other_side_.hasPendingConnections(); }));
    peer_ = other_side_.nextPendingConnection();
    ASSERT_TRUE(Await([this] { return (received_ += peer_->readAll().toStdString()) == "2Me"; })) << received_;
  }

  /// What has been sent since the last call.
  std::string Sent() {
    received_.clear();
    frmControl->tcp.SendData("me");
    EXPECT_TRUE(Await([this] { return (received_ += peer_->readAll().toStdString()).ends_with("me"); }));
    return received_.substr(0, received_.size() - 2);
  }

  void Open(const std::string& name) {
    DialogUser user(name.empty() ? name : Path(name));
    frmChess->mnuOpenGame.Click();
    EXPECT_EQ(user.title, "Open Game");
    EXPECT_EQ(user.filter, "Morva Game (*.mrv)");
    EXPECT_EQ(user.questions, 0);
  }

  /// How many questions the user was asked.
  int Save(const std::string& path, std::function<void()> meanwhile = {}) {
    DialogUser user(path, std::move(meanwhile));
    frmChess->mnuSaveGame.Click();
    EXPECT_EQ(user.title, "Save Game as");
    EXPECT_EQ(user.filter, "Morva Game (*.mrv)");
    return user.questions;
  }

  static std::string Tags() {
    std::string tags;
    for (const PictureBox& square : frmChess->squ) tags += square.Tag + " ";
    return tags;
  }

 private:
  QTcpServer other_side_;
  QTcpSocket* peer_ = nullptr;
  std::string received_;
};

TEST_F(GameFile, SavesOneLineUnderTheNameAsTyped) {
  Save(Path("game.mrv"));
  EXPECT_EQ(Bytes("game.mrv"), kStart + "\r\n");
  Save(Path("no extension"));
  EXPECT_EQ(Bytes("no extension"), kStart + "\r\n");
  EXPECT_EQ(Files().size(), 2);
  EXPECT_EQ(Sent(), "");
}

TEST_F(GameFile, AsksAndThenReplacesTheWholeFileByTheBoardAsItIsThen) {
  Put("game.mrv", std::string(5000, 'x'));
  EXPECT_EQ(Save(Path("game.mrv"), [] { frmChess->DoMove(52, 36); }), 1);
  std::string moved = kStart;
  moved[36] = 'o';
  moved[52] = Bytes("game.mrv")[52];  // nothing, of either colour
  EXPECT_EQ(Bytes("game.mrv"), moved + "\r\n");
  EXPECT_NE(moved[52], 'o');
}

TEST_F(GameFile, AFailedSaveLeavesWhatWasThere) {
  Put("game.mrv", "an older game");
  const auto old_handler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  Save(Path("game.mrv"), [before] {
    const rlimit full{10, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
  });
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, old_handler);
  EXPECT_EQ(Bytes("game.mrv"), "an older game");
  EXPECT_EQ(Files().size(), 1);

  Save("/proc/game.mrv");
  EXPECT_FALSE(QFile::exists("/proc/game.mrv"));
  Save(Path("no such folder/game.mrv"));
  EXPECT_EQ(Files().size(), 1);
}

TEST_F(GameFile, WhatWasSavedComesBackAndGoesToTheOtherSide) {
  frmChess->SetUpCheckers();
  frmChess->king(27, 1);
  Save(Path("game.mrv"));
  const std::string tags = Tags();
  const std::string line = frmChess->BoardLine();
  frmChess->SetUpChess();
  ASSERT_NE(Tags(), tags);
  Sent();

  Open("game.mrv");
  EXPECT_EQ(Tags(), tags);
  for (int i = 0; i < 64; ++i) {
    if (frmChess->squ(i).Tag == "0") continue;
    EXPECT_EQ(frmChess->squ(i).ForeColor, i < 24 ? kBlack : kWhite) << i;
  }
  EXPECT_EQ(Sent(), "1__" + line);
  EXPECT_EQ(frmToolWindow->lstHist.ListCount(), 0);
}

TEST_F(GameFile, OpensOnlyTheFirstLineAndSendsTheWholeOfIt) {
  const std::string line = std::string(63, 'd') + "j";
  const std::string tail = std::string("\xFF\x01 tail of any bytes\r", 21) + std::string(3000, 'z');
  for (const std::string& text : {line, line + "\r\n", line + "\n", line + "\r\n" + kStart + "\r\n"}) {
    frmChess->ClearBoard();
    Put("game.mrv", text);
    Open("game.mrv");
    EXPECT_EQ(frmChess->squ(63).Tag, "6");
    EXPECT_EQ(Sent(), "1__" + line);
  }
  Put("game.mrv", line + tail + "\r\n" + kStart);
  Open("game.mrv");
  EXPECT_EQ(Sent(), "1__" + line + tail);

  // More than the other side takes is cut off.
  Put("game.mrv", std::string(3 << 20, 'd'));
  Open("game.mrv");
  EXPECT_TRUE(Sent() == "1__" + std::string(MessageReader::kMaxMessage - 3, 'd'));
}

TEST_F(GameFile, AShortLineChangesTheSquaresUpToItsEnd) {
  Put("game.mrv", std::string(63, 'o') + "\r\n" + std::string(64, 'd'));
  Open("game.mrv");
  EXPECT_EQ(frmChess->squ(0).ForeColor, kWhite);
  EXPECT_EQ(frmChess->squ(62).Tag, "1");
  EXPECT_EQ(frmChess->squ(63).Tag, "2");
  EXPECT_EQ(Sent(), "");
}

TEST_F(GameFile, CancellingOrNothingToReadChangesNothing) {
  Save("");
  EXPECT_TRUE(Files().isEmpty());
  const std::string before = Tags();
  Put("empty.mrv", "");
  Put("no line.mrv", "\r\n" + std::string(64, 'd'));
  for (const char* name : {"", "empty.mrv", "no line.mrv", "missing.mrv", "no such folder/game.mrv"}) {
    Open(name);
    EXPECT_EQ(Tags(), before) << name;
  }
  EXPECT_EQ(Sent(), "");
}

TEST_F(GameFile, LettersThatStandForNothingLeaveThePicture) {
  const auto picture = frmChess->squ(0).Strokes();
  std::string line(64, 'd');
  line[0] = '\x01';
  line[1] = '\xFF';
  Put("game.mrv", line);
  Open("game.mrv");
  EXPECT_EQ(frmChess->squ(0).Tag, "-99");
  EXPECT_EQ(frmChess->squ(0).Strokes(), picture);
  EXPECT_EQ(frmChess->squ(0).ForeColor, kBlack);
  EXPECT_EQ(frmChess->squ(1).Tag, "145");
  EXPECT_EQ(frmChess->squ(2).Tag, "0");
  EXPECT_EQ(Sent(), "1__" + line);
}

TEST_F(GameFile, OpensWithoutAConnection) {
  frmControl->tcp.Close();
  Put("game.mrv", std::string(64, 'e'));
  Open("game.mrv");
  EXPECT_EQ(frmChess->BoardLine(), std::string(64, 'e'));
}

}  // namespace
}  // namespace morva
