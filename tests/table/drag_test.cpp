#include "tests/game.h"

namespace morva {
namespace {

class Drags : public GameTest {
 protected:
  void SetUp() override {
    Sit();
    other_.resize(50, 50);
  }

  static std::string MarkedAt(QPoint place) {
    QTest::mouseMove(MainWindow(), place);
    return Marks();
  }

  /// Another window gets the keys, and loses them.
  void Leave() {
    other_.activateWindow();
    ASSERT_TRUE(Await([] { return !frmChess->Native()->isActiveWindow(); }));
  }
  static void Return() {
    frmChess->Show();
    ASSERT_TRUE(HasKeys(*frmChess));
  }

  QWidget other_;
};

TEST_F(Drags, MarkTheEmptySquareUnderThePointer) {
  EXPECT_EQ(MarkedAt(At(18)), "");
  EXPECT_EQ(frmChess->Caption(), "Morva - Ann (C3)");
  MarkedAt(At(52));
  Press(52);
  const QPoint chat = At(60) + QPoint(0, 60), outside(-30, 10);
  const std::pair<QPoint, const char*> places[] = {{At(52), ""}, {At(44), "44 "}, {At(36), "36 "}, {At(12), ""},
                                                   {chat, ""},   {At(35), "35 "}, {outside, ""},   {At(44), "44 "}};
  for (const auto& [place, squares] : places) EXPECT_EQ(MarkedAt(place), squares) << place.x() << ", " << place.y();
  EXPECT_EQ(frmChess->squ(44).Strokes().front().color, kWhite);
  EXPECT_EQ(frmChess->Caption(), "Morva - Ann (E7)");
  QTest::mouseRelease(MainWindow(), Qt::LeftButton, {}, outside);
  EXPECT_TRUE(Marks().empty() && Sent().empty());
}

TEST_F(Drags, MoveToAnEmptySquareAndGiveTheTurn) {
  const struct {
    int from, too;
    const char* line;  // of the history; none where nothing moves
    const char* turn;
  } drops[] = {{52, 36, "Ann: E7 - E5 (white pawn) #1523611", "you"},
               {12, 28, "Ann: E2 - E4 (black pawn) #1122801", "you"},  // the other colour, out of turn
               {57, 36, nullptr, "me"},                                // a piece stands there
               {36, 36, nullptr, "me"},
               {33, 0, nullptr, "me"},
               {33, 34, nullptr, "you"}};
  std::string board = kStart;
  Lines history;
  for (const auto& drop : drops) {
    frmToolWindow->highlight("me");
    frmChess->coordinates.cmdShowCoord.SetFocus();
    Drag(drop.from, drop.too);
    if (drop.line != nullptr) {
      std::swap(board[static_cast<std::size_t>(drop.from)], board[static_cast<std::size_t>(drop.too)]);
      history.push_back(drop.line);
    }
    EXPECT_TRUE(Board() == board && History() == history) << drop.from;
    EXPECT_EQ(Turn(), drop.turn) << drop.from;
    EXPECT_EQ(ChatHasFocus(), drop.turn == std::string("you")) << drop.from;
  }
  EXPECT_EQ(Sent(), "152361122813334");
}

TEST_F(Drags, LeaveNothingBehindWhenTheyAreDisturbed) {
  other_.show();
  const std::function<void()> disturbances[] = {[] { Press(44, Qt::RightButton); },
                                                [] { Press(44, Qt::MiddleButton); },
                                                [] { Key(Qt::Key_Escape); },
                                                [] { frmChess->Enabled = false; },
                                                [this] {
                                                  Leave();
                                                  QTest::qWait(400);  // a window that seems lost may soon be back
                                                },
                                                [] {
                                                  Tell("352");  // the other side takes the piece
                                                  MarkedAt(At(43));
                                                  Release(12);
                                                  Tell("452116777215");
                                                }};
  for (const auto& disturb : disturbances) {
    Return();
    Press(52);
    EXPECT_EQ(MarkedAt(At(44)), "44 ");
    disturb();
    EXPECT_EQ(Marks(), "");
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    for (const auto button : {Qt::RightButton, Qt::MiddleButton, Qt::LeftButton}) Release(36, button);
    frmChess->Enabled = true;
    EXPECT_TRUE(Board() == kStart && Sent().empty());
  }
}

TEST_F(Drags, DropWhenTheWindowIsBackOrTheUserGoesOnInIt) {
  other_.show();
  for (const bool back : {true, false}) {
    Return();
    Press(back ? 52 : 44);
    Leave();
    MarkedAt(At(back ? 44 : 36));
    Release(back ? 44 : 36);
    EXPECT_EQ(Sent(), "");
    if (back) {
      Return();
    } else {
      Click(0, Qt::MiddleButton);
    }
    EXPECT_EQ(Sent(), back ? "15244" : "14436me");
  }
}

}  // namespace
}  // namespace morva
