#include "platform/window/form.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QHelpEvent>
#include <QLineEdit>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <QWindow>

#include "platform/controls/command_button.h"
#include "platform/controls/frame.h"
#include "platform/controls/list_box.h"
#include "platform/controls/pictures.h"
#include "platform/controls/text_box.h"
#include "platform/controls/text_log.h"
#include "platform/drawing/qt_color.h"
#include "platform/system/timer.h"
#include "platform/system/values.h"
#include "platform/window/window.h"
#include "tests/support.h"

namespace morva {
namespace {

std::string told;  // by the form, over all its lives

struct TestForm;
extern Window<TestForm> testForm;

struct TestForm : Form {
  TestForm() : Form({.scale_width = 4500, .scale_height = 3000}) {
    Place({{ok, 0, 0, 900, 300, "OK"},
           {cancel, 900, 0, 900, 300, "Cancel"},
           {other, 1800, 0, 900, 300, "Other"},
           {box, 0, 450, 3000, 300},
           {log, 0, 900, 3000, 900},
           {list, 0, 1900, 3000, 900},
           {disc, 3600, 450, 300, 300}});
    SetMenu({{0, menu, "&Menu"}, {1, copy, "C", "Ctrl+C"}, {1, cut, "X", "Ctrl+X"}, {1, undo, "Z", "Ctrl+Z"}});
    DefaultButton(ok);
    CancelButton(cancel);
    const auto tell = [](const char* word) { return [word] { told += word; }; };
    ok.Click = tell("ok ");
    cancel.Click = tell("cancel ");
    other.Click = tell("other ");
    copy.Click = tell("copy ");
    cut.Click = tell("cut ");
    undo.Click = tell("undo ");
    clock.Tick = tell("tick ");
    box.KeyPress = [](int key) { told += std::to_string(key) + "(" + testForm->box.Text() + ") "; };
    clock.Enabled = false;
  }
  void Form_Load() override { told += "load "; }
  void Form_Unload() override { told += "unload "; }
  void Form_Click() override { told += "click "; }

  CommandButton ok, cancel, other;
  TextBox box;
  TextLog log;
  ListBox list;
  Panel disc;
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

TEST_F(Forms, AreMadeOnReferenceAndAnewAfterUnload) {
  Unload(testForm);
  Unload(testForm);
  testForm.made = [](TestForm&) { told += "made "; };
  testForm->Tag = "left behind";
  EXPECT_FALSE(testForm->Native()->isVisible());
  testForm->ok.Click = [] { Unload(testForm); };  // from within its own handler
  testForm->Show();
  QTest::mouseClick(testForm->ok.Native(), Qt::LeftButton);
  EXPECT_TRUE(!testForm.Loaded() && testForm->Tag.empty());
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

TEST_F(Forms, DisabledTakeNoInputAndLookAsBefore) {
  const auto act = [] {
    ASSERT_TRUE(Focus(testForm->box));
    for (const auto key : {Qt::Key_A, Qt::Key_Return, Qt::Key_Escape}) Press(key);
    for (const QPoint place : {QPoint(10, 10), QPoint(290, 150)}) {
      QTest::mouseClick(Native(), Qt::LeftButton, {}, testForm->Client()->mapTo(testForm->Native(), place));
    }
    Press(Qt::Key_X, Qt::ControlModifier);
    Press(Qt::Key_M, Qt::AltModifier);
    if (QApplication::activePopupWidget() != nullptr) told += "menu";
    Press(Qt::Key_Escape);
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
  EXPECT_EQ(Told(), "97() ok 27(a) cancel ok click cut menu");
}

TEST_F(Forms, KeysReachMenusAndButtonsWhereverTheFocusIs) {
  TestForm& form = *testForm;
  form.log.Text = form.box.Text = "text";
  form.list.AddItem("line");
  QGuiApplication::clipboard()->setText("before");
  const std::tuple<Control&, const char*, const char*> focused[] = {
      {form.box, "ok ", "cancel "}, {form.log, "ok ", "cancel "},      {form.list, "ok ", "cancel "},
      {form.ok, "ok ", "cancel "},  {form.other, "other ", "cancel "}, {form.cancel, "cancel ", "cancel "}};
  for (const auto& [control, enter, escape] : focused) {
    ASSERT_TRUE(Focus(control));
    static_cast<QLineEdit*>(form.box.Native())->selectAll();
    told.clear();
    for (const auto key : {Qt::Key_C, Qt::Key_X, Qt::Key_Z}) Press(key, Qt::ControlModifier);
    EXPECT_EQ(Told(), "copy cut undo ");
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
      Press(key);
      EXPECT_EQ(Told(), enter);
    }
    Press(Qt::Key_Escape);
    EXPECT_TRUE(Told().ends_with(escape));
  }
  EXPECT_TRUE(form.box.Text == "text" && QGuiApplication::clipboard()->text() == "before");
  form.ok.Enabled = false;
  ASSERT_TRUE(Focus(form.box));
  Press(Qt::Key_Return);
  EXPECT_EQ(Told(), "");
}

TEST_F(Forms, TextBoxesHaveNoLimitAndTellEachKeyBeforeTheText) {
  TextBox& box = testForm->box;
  told.clear();
  QTest::keyClicks(box.Native(), "a ");
  for (const auto key : {Qt::Key_Backspace, Qt::Key_Left, Qt::Key_Return}) QTest::keyClick(box.Native(), key);
  TextBox alone;
  alone.KeyPress = [](int key) { told += std::to_string(key); };
  QTest::keyClick(alone.Native(), Qt::Key_Return);
  EXPECT_EQ(Told(), "97() 32(a) 8(a ) ok 13");
  box.Text = std::string(100000, 'x');
  EXPECT_EQ(box.Text().size(), 100000U);
  box.Text = "J\xC3\xB6rg";
  box.SelStart = 1;
  box.SelLength = 2;
  EXPECT_EQ(static_cast<QLineEdit*>(box.Native())->selectedText(), "\xC3\xB6r");
}

TEST_F(Forms, FollowTheDesktopsColours) {
  Panel& disc = testForm->disc;
  disc.FillSolid = true;
  disc.FillColor = disc.ForeColor = kButtonHighlight;
  disc.Circle(150, 150, 300);
  const QPalette usual = QGuiApplication::palette();
  QPalette other(QColor(30, 40, 50));
  other.setColor(QPalette::Light, Qt::blue);
  for (const QPalette& palette : {other, usual}) {
    QGuiApplication::setPalette(palette);
    QTest::qWait(1);
    EXPECT_EQ(disc.Native()->grab().toImage().pixelColor(10, 10), QtColor(kButtonHighlight));
  }
}

TEST_F(Forms, TipsShowTextAsItStands) {
  Control& control = testForm->ok;
  for (const char* text : {"<b>x</b> & &lt;i&gt;", "two  blanks"}) {
    control.ToolTipText = text;
    QHelpEvent help(QEvent::ToolTip, {10, 10}, control.Native()->mapToGlobal(QPoint(10, 10)));
    QApplication::sendEvent(control.Native(), &help);
    EXPECT_EQ(QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText(), text);
    QToolTip::hideText();
    EXPECT_TRUE(Await([] { return !QToolTip::isVisible(); }));
  }
}

TEST_F(Forms, TheirTimersTickAgainAndAgainButNeverFasterThanTheyAreSeen) {
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
