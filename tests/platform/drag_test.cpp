#include <gtest/gtest.h>

#include <QWindow>

#include "platform/controls.h"
#include "platform/form.h"
#include "tests/support.h"

namespace morva {
namespace {

/// Two pictures and a button that has nothing to say, and a bare strip below; it notes what it is told.
struct DragForm : Form {
  DragForm() : Form({.scale_width = 4500, .scale_height = 3000}) {
    Place({{"a", a, 0, 0, 1500, 1500}, {"b", b, 1500, 0, 1500, 1500}, {"mute", mute, 3000, 0, 1500, 1500}});
    int index = 0;
    for (auto& [picture, name] : {std::pair{&a, "a"}, {&b, "b"}}) {
      picture->Index = index++;
      picture->AutomaticDrag = true;
      picture->DragOver = [this, name = name](Control& source, float x, float y, DragState state) {
        Note(name, source, x, y, std::to_string(static_cast<int>(state)));
      };
      picture->DragDrop = [this, name = name](Control& source, float x, float y) { Note(name, source, x, y, "drop"); };
      picture->MouseDown = [this, name = name](int button, int shift, float x, float y) {
        told += std::string(name) + " button " + std::to_string(button) + " " + std::to_string(shift) + Place2(x, y);
      };
      picture->MouseMove = [this, name = name](int, int, float, float) { told += std::string(name) + " moved, "; };
    }
  }

  void Form_DragOver(Control& source, float x, float y, DragState state) override {
    Note("form", source, x, y, std::to_string(static_cast<int>(state)));
  }
  void Form_MouseDown(int button, int shift, float x, float y) override {
    told += "form button " + std::to_string(button) + " " + std::to_string(shift) + Place2(x, y);
  }

  static std::string Place2(float x, float y) {
    return " at " + std::to_string(static_cast<int>(x)) + " " + std::to_string(static_cast<int>(y)) + ", ";
  }
  void Note(const std::string& name, const Control& source, float x, float y, const std::string& what) {
    told += name + " " + what + " of " + std::to_string(source.Index) + Place2(x, y);
  }

  PictureBox a, b;
  CommandButton mute;
  std::string told;
};

class Drags : public testing::Test {
 protected:
  void SetUp() override {
    form_.Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_.Native()));
    Told();
  }
  std::string Told() { return std::exchange(form_.told, ""); }
  QWindow* Window() { return form_.Native()->windowHandle(); }
  void Press(int x, int y, Qt::MouseButton button = Qt::LeftButton) { QTest::mousePress(Window(), button, {}, {x, y}); }
  void Move(int x, int y) { QTest::mouseMove(Window(), {x, y}); }
  void Release(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseRelease(Window(), button, {}, {x, y});
  }

  DragForm form_;
};

TEST_F(Drags, TellTheControlUnderThePointer) {
  Move(12, 22);
  EXPECT_EQ(Told(), "a moved, ");
  Press(12, 22);
  EXPECT_EQ(Told(), "a 0 of 0 at 150 300, ");
  Move(13, 22);
  EXPECT_EQ(Told(), "a 2 of 0 at 165 300, ");
  Move(112, 32);
  EXPECT_EQ(Told(), "a 1 of 0 at 165 300, b 0 of 0 at 150 450, ");
  Move(112, 150);
  EXPECT_EQ(Told(), "b 1 of 0 at 150 450, form 0 of 0 at 1680 2250, ");
  Move(250, 50);
  EXPECT_EQ(Told(), "form 1 of 0 at 1680 2250, ");
  Move(-20, 50);
  EXPECT_EQ(Told(), "");
  Move(112, 32);
  EXPECT_EQ(Told(), "b 0 of 0 at 150 450, ");
  Release(112, 32);
  EXPECT_EQ(Told(), "b drop of 0 at 150 450, ");
  Move(115, 32);
  EXPECT_EQ(Told(), "b moved, ");

  Press(115, 32);
  Release(115, 32);
  EXPECT_EQ(Told(), "b 0 of 1 at 195 450, b drop of 1 at 195 450, ");
}

TEST_F(Drags, EndWithoutADropWhereNothingTakesIt) {
  for (const QPoint end : {QPoint(250, 50), {50, 150}, {400, 50}, {-5, -5}}) {
    Press(12, 22);
    Move(end.x(), end.y());
    Told();
    Release(end.x(), end.y());
    EXPECT_EQ(Told(), "") << end.x();
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  }
}

TEST_F(Drags, EndWithALeaveWhenTheyAreDisturbed) {
  QWidget other;
  other.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
  const std::pair<const char*, std::function<void()>> disturbances[] = {
      {"right button", [this] { Press(112, 32, Qt::RightButton); }},
      {"middle button", [this] { Press(112, 32, Qt::MiddleButton); }},
      {"Escape", [this] { QTest::keyClick(Window(), Qt::Key_Escape); }},
      {"other window", [&] {
         other.activateWindow();
         ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
       }},
      {"disabled", [this] { form_.Enabled = false; }},
  };
  for (const auto& [name, disturb] : disturbances) {
    form_.Enabled = true;
    form_.SetFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_.Native()));
    Press(12, 22);
    Move(112, 32);
    Told();
    disturb();
    EXPECT_EQ(Told(), "b 1 of 0 at 150 450, ") << name;
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << name;
    Move(12, 22);
    EXPECT_EQ(Told().find(" of "), std::string::npos) << name;
    for (const auto button : {Qt::RightButton, Qt::MiddleButton, Qt::LeftButton}) Release(12, 22, button);
    EXPECT_EQ(Told(), "") << name;
  }
}

TEST_F(Drags, BeginWithTheLeftButtonAlone) {
  Move(12, 22);
  Told();
  Press(12, 22, Qt::RightButton);
  Move(112, 32);
  Release(112, 32, Qt::RightButton);
  EXPECT_EQ(Told(), "a button 2 0 at 150 300, a moved, ");
  QTest::mouseClick(Window(), Qt::MiddleButton, Qt::ShiftModifier | Qt::ControlModifier, {112, 32});
  EXPECT_EQ(Told(), "b button 4 3 at 150 450, ");
  QTest::mouseClick(Window(), Qt::LeftButton, {}, {30, 150});
  EXPECT_EQ(Told(), "form button 1 0 at 450 2250, ");
  QTest::mouseClick(Window(), Qt::MiddleButton, {}, {250, 50});
  EXPECT_EQ(Told(), "");
}

}  // namespace
}  // namespace morva
