#include "platform/window/form.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QLineEdit>
#include <QWindow>

#include "platform/controls/command_button.h"
#include "platform/controls/frame.h"
#include "platform/controls/list_box.h"
#include "platform/controls/text_box.h"
#include "platform/controls/text_log.h"
#include "platform/system/timer.h"
#include "platform/system/values.h"
#include "platform/window/window.h"
#include "tests/support.h"

namespace morva {
namespace {

std::string told;  // by the form, over all its lives

struct TestForm : Form {
  TestForm() : Form({.scale_width = 4500, .scale_height = 3000}) {
    Place({{"ok", ok, 0, 0, 900, 300, "OK"},
           {"cancel", cancel, 900, 0, 900, 300, "Cancel"},
           {"other", other, 1800, 0, 900, 300, "Other"},
           {"box", box, 0, 450, 3000, 300},
           {"log", log, 0, 900, 3000, 900},
           {"list", list, 0, 1900, 3000, 900}});
    SetMenu({{0, menu, "&Menu"}, {1, copy, "C", "Ctrl+C"}, {1, cut, "X", "Ctrl+X"}, {1, undo, "Z", "Ctrl+Z"}});
    DefaultButton(ok);
    CancelButton(cancel);
    ok.Click = [] { told += "ok "; };
    cancel.Click = [] { told += "cancel "; };
    other.Click = [] { told += "other "; };
    copy.Click = [] { told += "copy "; };
    cut.Click = [] { told += "cut "; };
    undo.Click = [] { told += "undo "; };
    clock.Tick = [] { told += "tick "; };
    box.KeyPress = [](int key) { told += "key " + std::to_string(key) + " "; };
    clock.Enabled = false;
  }
  void Form_Load() override { told += "load "; }
  void Form_Unload() override { told += "unload "; }
  void Form_Click() override { told += "click "; }

  CommandButton ok, cancel, other;
  TextBox box;
  TextLog log;
  ListBox list;
  Menu menu, copy, cut, undo;
  Timer clock{1};
};

Window<TestForm> testForm;

class Forms : public testing::Test {
 protected:
  void SetUp() override {
    testForm->Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(testForm->Native()));
    told.clear();
  }
  void TearDown() override {
    Unload(testForm);
    QTest::qWait(1);
  }
  static std::string Told() { return std::exchange(told, ""); }
  static QWindow* Native() { return testForm->Native()->windowHandle(); }
  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(Native(), key, modifiers); }
  static bool Focus(Control& control) {
    control.SetFocus();
    return Await([&] { return control.Native()->hasFocus(); });
  }
};

TEST_F(Forms, HaveTheClientAreaOfTheirLayout) {
  using Frame = FormStyle::Frame;
  for (const Frame frame : {Frame::kNone, Frame::kFixed, Frame::kSizable, Frame::kSizableWidth}) {
    Form bare({.frame = frame, .scale_width = 6720, .scale_height = 8085});
    EXPECT_EQ(bare.Client()->size(), QSize(448, 539));
    bare.ScaleHeight = 1665;
    bare.Show();
    EXPECT_EQ(bare.Client()->size(), QSize(448, 111));
    bare.Native()->resize(900, 900);
    const bool fixed = frame == Frame::kNone || frame == Frame::kFixed;
    EXPECT_EQ(bare.Client()->size(), QSize(fixed ? 448 : 900, frame == Frame::kSizable ? 900 : 111));
  }
  EXPECT_EQ(testForm->Client()->size(), QSize(300, 200));
  EXPECT_EQ(testForm->Client()->mapToGlobal(QPoint()).y() * kTwipsPerPixel, testForm->Top() + testForm->ClientTop());
}

TEST_F(Forms, AreMadeOnReferenceAndAnewAfterUnload) {
  Unload(testForm);
  Unload(testForm);
  testForm.made = [](TestForm&) { told += "made "; };
  testForm->Tag = "left behind";
  EXPECT_FALSE(testForm->Native()->isVisible());
  testForm->ok.Click = [] { Unload(testForm); };  // from within its own handler
  testForm->Show();
  QTest::mouseClick(testForm->ok.Native(), Qt::LeftButton);
  EXPECT_FALSE(testForm.Loaded());
  EXPECT_EQ(testForm->Tag, "");
  testForm->Native()->close();
  EXPECT_FALSE(testForm.Loaded());
  testForm.made = nullptr;
  EXPECT_EQ(Told(), "unload made load unload made load unload ");

  Form stubborn({.scale_width = 1500, .scale_height = 1500, .close_box = false});
  stubborn.unload = [] { told += "unload "; };
  stubborn.Show();
  stubborn.Native()->close();
  EXPECT_TRUE(stubborn.Native()->isVisible() && told.empty());
}

TEST_F(Forms, OffEveryScreenAreOutOfSight) {
  for (const auto& [left, top] : {std::pair{1500, 750}, {1500, -9990}, {-999990, 750}, {3000, 1500}}) {
    testForm->Left = left;
    testForm->Top = top;
    testForm->Show();
    EXPECT_EQ(testForm->Native()->isVisible(), left > 0 && top > 0) << left << ", " << top;
    EXPECT_TRUE(testForm->Left() == left && testForm->Top() == top);
  }
  testForm->Hide();
  testForm->Left = 1500;
  EXPECT_FALSE(testForm->Native()->isVisible());
}

TEST_F(Forms, DisabledTakeNoInputAndLookAsBefore) {
  const auto act = [] {
    ASSERT_TRUE(Focus(testForm->box));
    for (const auto key : {Qt::Key_A, Qt::Key_Return, Qt::Key_Escape}) Press(key);
    for (const QPoint place : {QPoint(10, 10), QPoint(290, 150)}) {
      QTest::mouseClick(Native(), Qt::LeftButton, {}, testForm->Client()->mapTo(testForm->Native(), place));
    }
    Press(Qt::Key_X, Qt::ControlModifier);
    Press(Qt::Key_M, Qt::AltModifier);
    if (QWidget* menu = QApplication::activePopupWidget()) {
      told += "menu";
      menu->close();
    }
  };
  const QImage enabled = testForm->ok.Native()->grab().toImage();
  testForm->Enabled = false;
  act();
  testForm->Native()->close();
  EXPECT_EQ(Told(), "");
  ASSERT_TRUE(testForm.Loaded());
  EXPECT_EQ(testForm->ok.Native()->grab().toImage(), enabled);
  testForm->clock.Enabled = true;
  EXPECT_TRUE(Await([] { return told == "tick tick "; }));
  testForm->clock.Enabled = false;
  testForm->Enabled = true;
  Told();
  act();
  EXPECT_EQ(Told(), "key 97 ok key 27 cancel ok click cut menu");
  EXPECT_EQ(testForm->box.Text(), "a");
}

TEST_F(Forms, ShortcutsActWhereverTheFocusIs) {
  TestForm& form = *testForm;
  form.log.Text = "log";
  form.list.AddItem("line");
  QGuiApplication::clipboard()->setText("before");
  for (Control* control : std::initializer_list<Control*>{&form.box, &form.log, &form.list, &form.ok}) {
    ASSERT_TRUE(Focus(*control));
    for (const char* text : {"", "text"}) form.box.Text = text;
    static_cast<QLineEdit*>(form.box.Native())->selectAll();
    told.clear();
    for (const auto key : {Qt::Key_C, Qt::Key_X, Qt::Key_Z}) Press(key, Qt::ControlModifier);
    EXPECT_EQ(Told(), "copy cut undo ");
    EXPECT_TRUE(form.box.Text == "text" && QGuiApplication::clipboard()->text() == "before");
  }
}

TEST_F(Forms, EnterAndEscapePressTheirButtons) {
  TestForm& form = *testForm;
  const std::tuple<Control&, Qt::Key, const char*> cases[] = {
      {form.box, Qt::Key_Enter, "ok "},        {form.log, Qt::Key_Return, "ok "},
      {form.list, Qt::Key_Return, "ok "},      {form.other, Qt::Key_Return, "other "},
      {form.cancel, Qt::Key_Enter, "cancel "}, {form.log, Qt::Key_Escape, "cancel "},
      {form.other, Qt::Key_Escape, "cancel "}};
  for (const auto& [focused, key, expected] : cases) {
    ASSERT_TRUE(Focus(focused));
    Press(key);
    EXPECT_EQ(Told(), expected);
  }
  form.ok.Enabled = false;
  ASSERT_TRUE(Focus(form.box));
  Press(Qt::Key_Return);
  EXPECT_EQ(Told(), "");
}

TEST_F(Forms, ShowTheirTitleAsItStands) {
  for (const char* title : {"a&b", "<b>x</b>", "x[*]y [*][*]", "J\xC3\xB6rg"}) {
    testForm->Caption = title;
    EXPECT_EQ(Native()->title(), title);
  }
}

TEST(Timers, TickAgainAndAgainButNeverFasterThanTheyAreSeen) {
  Timer timer(1);
  int ticks = 0;
  timer.Tick = [&] { ++ticks; };
  QElapsedTimer clock;
  clock.start();
  ASSERT_TRUE(Await([&] { return ticks >= 10; }));
  EXPECT_GE(clock.elapsed(), 140);
  for (const bool by_interval : {true, false}) {
    timer.Interval = by_interval ? 0 : 1;
    timer.Enabled = by_interval;
    ticks = 0;
    QTest::qWait(60);
    EXPECT_EQ(ticks, 0);
    timer.Interval = 5;
    timer.Enabled = true;
    EXPECT_TRUE(Await([&] { return ticks > 0; }));
  }
}

}  // namespace
}  // namespace morva
