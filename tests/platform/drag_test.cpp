#include <gtest/gtest.h>

#include <QWindow>

#include "platform/controls.h"
#include "platform/form.h"
#include "tests/support.h"

namespace morva {
namespace {

/// Two pictures, a button that has nothing to say, and a bare strip below. It notes what it is told, as "a 0 of 0 at
/// 150 300": the control, the state, the source, the place.
struct DragForm : Form {
  DragForm() : Form({.scale_width = 4500, .scale_height = 3000}) {
    Place({{"a", a, 0, 0, 1500, 1500}, {"b", b, 1500, 0, 1500, 1500}, {"mute", mute, 3000, 0, 1500, 1500}});
    for (const auto& [picture, name] : {std::pair{&a, "a "}, {&b, "b "}}) {
      picture->Index = name[0] - 'a';
      picture->AutomaticDrag = true;
      picture->DragOver = [this, name = name](Control& source, float x, float y, DragState state) {
        Note(name + std::to_string(static_cast<int>(state)) + " of ", source.Index, x, y);
      };
      picture->DragDrop = [this, name = name](Control& source, float x, float y) {
        Note(std::string(name) + "drop of ", source.Index, x, y);
      };
      picture->MouseDown = [this, name = name](int button, int shift, float x, float y) {
        Note(name + std::to_string(shift) + " button ", button, x, y);
      };
      picture->MouseMove = [this, name = name](int, int, float x, float y) {
        Note(std::string(name) + "moved ", 0, x, y);
      };
    }
  }
  void Form_DragOver(Control& source, float x, float y, DragState state) override {
    Note("form " + std::to_string(static_cast<int>(state)) + " of ", source.Index, x, y);
  }
  void Form_MouseDown(int button, int /*shift*/, float x, float y) override { Note("form button ", button, x, y); }
  void Note(const std::string& what, int number, float x, float y) {
    told += what + std::to_string(number) + " at " + std::to_string(std::lround(x)) + " " +
            std::to_string(std::lround(y)) + ", ";
  }

  PictureBox a, b;
  CommandButton mute;
  std::string told;
};

class Drags : public testing::Test {
 protected:
  void SetUp() override {
    other_.setGeometry(0, 0, 50, 50);
    other_.show();
    Activate();
  }
  void Activate() {
    form_.Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_.Native()));
    Move(12, 22);
    form_.told.clear();
  }
  std::string Told() { return std::exchange(form_.told, ""); }
  QWindow* Window() { return form_.Native()->windowHandle(); }
  void Press(int x, int y, Qt::MouseButton button = Qt::LeftButton) { QTest::mousePress(Window(), button, {}, {x, y}); }
  void Move(int x, int y) { QTest::mouseMove(Window(), {x, y}); }
  void Release(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseRelease(Window(), button, {}, {x, y});
  }

  DragForm form_;
  QWidget other_;
};

TEST_F(Drags, TellTheControlUnderThePointer) {
  Press(12, 22);
  EXPECT_EQ(Told(), "a 0 of 0 at 150 300, ");
  const struct {
    int x, y;
    const char* told;
  } moves[] = {{13, 22, "a 2 of 0 at 165 300, "},
               {112, 32, "a 1 of 0 at 165 300, b 0 of 0 at 150 450, "},
               {112, 150, "b 1 of 0 at 150 450, form 0 of 0 at 1680 2250, "},
               {250, 50, "form 1 of 0 at 1680 2250, "},
               {-20, 50, ""},
               {112, 32, "b 0 of 0 at 150 450, "}};
  for (const auto& move : moves) {
    Move(move.x, move.y);
    EXPECT_EQ(Told(), move.told);
  }
  Release(112, 32);
  EXPECT_EQ(Told(), "b drop of 0 at 150 450, ");
  Move(115, 32);
  EXPECT_EQ(Told(), "b moved 0 at 195 450, ");
  Press(115, 32);
  Release(115, 32);
  EXPECT_EQ(Told(), "b 0 of 1 at 195 450, b drop of 1 at 195 450, ");
}

TEST_F(Drags, EndWithALeaveWhenTheyAreDisturbedAndWithoutADrop) {
  const std::pair<const char*, std::function<void()>> disturbances[] = {
      {"right button", [this] { Press(112, 32, Qt::RightButton); }},
      {"middle button", [this] { Press(112, 32, Qt::MiddleButton); }},
      {"Escape", [this] { QTest::keyClick(Window(), Qt::Key_Escape); }},
      {"other window",
       [this] {
         other_.activateWindow();
         QTest::qWait(400);  // a window that seems lost may be back in a moment
       }},
      {"disabled", [this] { form_.Enabled = false; }},
      {"mute button", [this] { Release(250, 50); }},
  };
  for (const auto& [name, disturb] : disturbances) {
    Activate();
    Press(12, 22);
    Move(112, 32);
    Told();
    if (name == disturbances[5].first) Move(250, 50);
    disturb();
    EXPECT_EQ(Told(), "b 1 of 0 at 150 450, ") << name;
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << name;
    Move(12, 22);
    for (const auto button : {Qt::RightButton, Qt::MiddleButton, Qt::LeftButton}) Release(12, 22, button);
    EXPECT_EQ(Told().find(" of "), std::string::npos) << name;
    form_.Enabled = true;
  }
}

TEST_F(Drags, DropWhenTheWindowIsBackOrTheUserGoesOnInIt) {
  const std::pair<const char*, std::function<void()>> signs[] = {
      {"back",
       [this] {
         form_.Show();
         Await([this] { return form_.Native()->isActiveWindow(); });
       }},
      {"next press", [this] { Press(112, 32, Qt::MiddleButton); }},
  };
  for (const auto& [name, sign] : signs) {
    Activate();
    Press(12, 22);
    other_.activateWindow();
    ASSERT_TRUE(Await([&] { return !form_.Native()->isActiveWindow(); }));
    Told();
    Release(112, 32);
    EXPECT_EQ(Told().find("drop"), std::string::npos) << name;
    sign();
    EXPECT_TRUE(form_.told.starts_with("b drop of 0 at 150 450, ")) << name << ": " << form_.told;
    Release(112, 32, Qt::MiddleButton);
  }
}

TEST_F(Drags, KnowNothingUnderAnotherWindow) {
  Press(12, 22);
  QWidget cover;
  cover.setGeometry(QRect(form_.Client()->mapToGlobal(QPoint(105, 25)), QSize(50, 50)));
  cover.show();
  Told();
  Move(112, 32);
  EXPECT_EQ(Told(), "a 1 of 0 at 150 300, ");
  Release(112, 32);
  EXPECT_EQ(Told(), "");
}

TEST_F(Drags, BeginWithTheLeftButtonAlone) {
  QTest::mouseClick(Window(), Qt::RightButton, {}, {12, 22});
  QTest::mouseClick(Window(), Qt::MiddleButton, Qt::ShiftModifier | Qt::ControlModifier, {12, 22});
  QTest::mouseClick(Window(), Qt::LeftButton, {}, {30, 150});
  EXPECT_EQ(Told(), "a 0 button 2 at 150 300, a 3 button 4 at 150 300, form button 1 at 450 2250, ");
}

}  // namespace
}  // namespace morva
