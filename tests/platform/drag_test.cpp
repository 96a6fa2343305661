#include <gtest/gtest.h>

#include <QWindow>
#include <sstream>

#include "platform/controls/command_button.h"
#include "platform/controls/pictures.h"
#include "platform/window/form.h"
#include "tests/support.h"

namespace morva {
namespace {

/// Two pictures, a button that has nothing to say, and a bare strip below. It notes what it is told: who, what, the
/// source's or the button's number, and the place.
struct DragForm : Form {
  DragForm() : Form({.scale_width = 4500, .scale_height = 3000}) {
    Place({{"a", a, 0, 0, 1500, 1500}, {"b", b, 1500, 0, 1500, 1500}, {"mute", mute, 3000, 0, 1500, 1500}});
    for (PictureBox* picture : {&a, &b}) {
      const std::string name = picture == &a ? "a" : "b";
      picture->Index = name[0];
      picture->AutomaticDrag = true;
      picture->DragOver = [this, name](Control& source, float x, float y, DragState state) {
        Note(name, static_cast<int>(state), static_cast<char>(source.Index), x, y);
      };
      picture->DragDrop = [this, name](Control& source, float x, float y) {
        Note(name, "drop", static_cast<char>(source.Index), x, y);
      };
      picture->MouseDown = [this, name](int button, int shift, float x, float y) { Note(name, shift, button, x, y); };
    }
    b.MouseMove = [this](int, int, float x, float y) { Note("b", "moved", "", x, y); };
  }
  void Form_DragOver(Control& source, float x, float y, DragState state) override {
    Note("form", static_cast<int>(state), static_cast<char>(source.Index), x, y);
  }
  void Form_MouseDown(int button, int shift, float x, float y) override { Note("form", shift, button, x, y); }
  template <class What, class Number>
  void Note(const std::string& who, What what, Number number, float x, float y) {
    told << who << ' ' << what << ' ' << number << ' ' << x << ' ' << y << ", ";
  }

  PictureBox a, b;
  CommandButton mute;
  std::ostringstream told;
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
    Told();
  }
  std::string Told() { return std::exchange(form_.told, {}).str(); }
  QWindow* Window() { return form_.Native()->windowHandle(); }
  void Press(int x, int y, Qt::MouseButton button = Qt::LeftButton) { QTest::mousePress(Window(), button, {}, {x, y}); }
  std::string Moved(int x, int y) {
    QTest::mouseMove(Window(), {x, y});
    return Told();
  }
  std::string Released(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseRelease(Window(), button, {}, {x, y});
    return Told();
  }

  DragForm form_;
  QWidget other_;
};

TEST_F(Drags, BeginWithTheLeftButtonAndTellTheControlUnderThePointer) {
  QTest::mouseClick(Window(), Qt::RightButton, {}, {12, 22});
  QTest::mouseClick(Window(), Qt::MiddleButton, Qt::ShiftModifier | Qt::ControlModifier, {12, 22});
  QTest::mouseClick(Window(), Qt::LeftButton, {}, {30, 150});
  EXPECT_EQ(Told(), "a 0 2 150 300, a 3 4 150 300, form 0 1 450 2250, ");
  Press(12, 22);
  EXPECT_EQ(Told(), "a 0 a 150 300, ");
  EXPECT_EQ(Moved(13, 22), "a 2 a 165 300, ");
  EXPECT_EQ(Moved(112, 32), "a 1 a 165 300, b 0 a 150 450, ");
  EXPECT_EQ(Moved(112, 150), "b 1 a 150 450, form 0 a 1680 2250, ");
  EXPECT_EQ(Moved(250, 50), "form 1 a 1680 2250, ");
  EXPECT_EQ(Moved(-20, 50), "");
  EXPECT_EQ(Moved(112, 32), "b 0 a 150 450, ");
  EXPECT_EQ(Released(112, 32), "b drop a 150 450, ");
  EXPECT_EQ(Moved(115, 32), "b moved  195 450, ");
  Press(115, 32);
  EXPECT_EQ(Released(115, 32), "b 0 b 195 450, b drop b 195 450, ");

  // What another window covers is not there.
  Press(12, 22);
  QWidget cover;
  cover.setGeometry(QRect(form_.Client()->mapToGlobal(QPoint(105, 25)), QSize(50, 50)));
  cover.show();
  Told();
  EXPECT_EQ(Moved(112, 32), "a 1 a 150 300, ");
  EXPECT_EQ(Released(112, 32), "");
}

TEST_F(Drags, EndWithALeaveWhenTheyAreDisturbedAndWithoutADrop) {
  const std::function<void()> disturbances[] = {
      [this] { Press(112, 32, Qt::RightButton); },
      [this] { Press(112, 32, Qt::MiddleButton); },
      [this] { QTest::keyClick(Window(), Qt::Key_Escape); },
      [this] {
        other_.activateWindow();
        QTest::qWait(400);  // a window that seems lost may be back in a moment
      },
      [this] { form_.Enabled = false; },
      [this] {
        QTest::mouseMove(Window(), {250, 50});  // over the mute button
        QTest::mouseRelease(Window(), Qt::LeftButton, {}, {250, 50});
      }};
  for (int i = 0; i < 6; ++i) {
    Activate();
    Press(12, 22);
    Moved(112, 32);
    disturbances[i]();
    EXPECT_EQ(Told(), "b 1 a 150 450, ") << i;
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << i;
    for (const auto button : {Qt::RightButton, Qt::MiddleButton, Qt::LeftButton}) {
      EXPECT_EQ(Released(12, 22, button), "") << i;
    }
    form_.Enabled = true;
  }
}

TEST_F(Drags, DropWhenTheWindowIsBackOrTheUserGoesOnInIt) {
  for (const bool back : {true, false}) {
    Activate();
    Press(12, 22);
    other_.activateWindow();
    ASSERT_TRUE(Await([&] { return !form_.Native()->isActiveWindow(); }));
    Moved(112, 32);
    EXPECT_EQ(Released(112, 32), "");
    if (back) {
      form_.Show();
      Await([this] { return form_.Native()->isActiveWindow(); });
    } else {
      Press(112, 32, Qt::MiddleButton);
    }
    EXPECT_EQ(Told(), back ? "b drop a 150 450, " : "b drop a 150 450, b 0 4 150 450, ");
    Released(112, 32, Qt::MiddleButton);
  }
}

}  // namespace
}  // namespace morva
