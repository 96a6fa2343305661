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
  EXPECT_EQ(QGuiApplication::overrideCursor()->hotSpot(), QPoint(20, 0)) << "the fingertip";
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
  const std::tuple<int, int, const char*> drops[] = {{52, 36, "you"}, {12, 28, "you"},  // the other colour, out of turn
                                                     {57, 36, "me"},                    // a piece stands there
                                                     {36, 36, "me"},  {33, 0, "me"},
                                                     {33, 34, "you"}};  // nothing moves, and yet
  for (const auto& [from, too, turn] : drops) {
    frmToolWindow->highlight("me");
    frmChess->coordinates.cmdShowCoord.SetFocus();
    Drag(from, too);
    EXPECT_EQ(Turn(), turn) << from;
    EXPECT_EQ(ChatHasFocus(), turn == std::string("you")) << from;
  }
  EXPECT_EQ(Sent(), "152361122813334");
  EXPECT_EQ(Board(), "fhgjighfeeee.eee............e.......o...........oooo.oooprqtsqrp");
  EXPECT_EQ(History(), (Lines{"Ann: E7 - E5 (white pawn) #1523611", "Ann: E2 - E4 (black pawn) #1122801"}));
}

TEST_F(Drags, LeaveNothingBehindWhenTheyAreDisturbed) {
  other_.show();
  const std::function<void()> disturbances[] = {[] { Press(44, Qt::RightButton); }, [] { Key(Qt::Key_Escape); },
                                                [] { frmChess->Enabled = false; },
                                                [this] {
                                                  Leave();
                                                  Release(44);
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
    Press(52);
    Leave();
    MarkedAt(At(43));
    Release(44);
    EXPECT_EQ(Sent(), "");
    back ? Return() : Click(0, Qt::MiddleButton);
    EXPECT_EQ(Sent() + Marks(), back ? "15244" : "15244me");
    Tell("14452");
  }
}

}  // namespace
}  // namespace morva
