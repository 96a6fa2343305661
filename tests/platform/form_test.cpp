#include "platform/form.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QLineEdit>
#include <QWindow>

#include "platform/controls.h"
#include "platform/timer.h"
#include "platform/values.h"
#include "platform/window.h"
#include "tests/support.h"

namespace morva {
namespace {

struct TestForm : Form {
  TestForm() : Form({.caption = "Test", .scale_width = 4500, .scale_height = 3000}) {
    Place({{"ok", ok, 0, 0, 900, 300, "OK"},
           {"cancel", cancel, 900, 0, 900, 300, "Cancel"},
           {"other", other, 1800, 0, 900, 300, "Other"},
           {"box", box, 0, 450, 3000, 300},
           {"log", log, 0, 900, 3000, 900},
           {"list", list, 0, 1900, 3000, 900}});
    SetMenu({{0, menu, "&Menu"}, {1, copy, "&Copy", "Ctrl+C"}, {1, cut, "C&ut", "Ctrl+X"}, {1, undo, "&Undo", "Ctrl+Z"}});
    DefaultButton(ok);
    CancelButton(cancel);
    const std::pair<std::function<void()>*, const char*> events[] = {
        {&ok.Click, "ok "}, {&cancel.Click, "cancel "}, {&other.Click, "other "}, {&copy.Click, "copy "},
        {&cut.Click, "cut "}, {&undo.Click, "undo "}, {&clock.Tick, "tick "}};
    for (const auto& [event, name] : events) *event = [this, name = name] { told += name; };
    box.KeyPress = [this](int key) { told += "key " + std::to_string(key) + " "; };
    clock.Enabled = false;
  }
  void Form_Load() override { all_told += "load "; }
  void Form_Unload() override { all_told += "unload "; }
  void Form_Activate() override { told += "activate "; }
  void Form_Click() override { told += "click "; }
  void Form_Resize() override { told += "resize "; }

  CommandButton ok, cancel, other;
  TextBox box;
  TextLog log;
  ListBox list;
  Menu menu, copy, cut, undo;
  Timer clock{1};
  std::string told;
  static inline std::string all_told;
};

Window<TestForm> testForm;

class Forms : public testing::Test {
 protected:
  void SetUp() override {
    testForm->Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(testForm->Native()));
    Told();
  }
  void TearDown() override {
    Unload(testForm);
    QTest::qWait(1);
  }
  static std::string Told() { return std::exchange(testForm->told, ""); }
  static QWindow* Native() { return testForm->Native()->windowHandle(); }
  static void Click(const QWidget* widget) {
    QTest::mouseClick(Native(), Qt::LeftButton, {}, widget->mapTo(testForm->Native(), widget->rect().center()));
  }
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
    bare.Show();
    QTest::qWait(10);
    EXPECT_EQ(bare.Client()->size(), QSize(448, 539));
    EXPECT_TRUE(bare.ScaleWidth() == 6720 && bare.ScaleHeight() == 8085);
    bare.ScaleHeight = 1665;
    EXPECT_EQ(bare.Client()->size(), QSize(448, 111));
    bare.Native()->resize(900, 900);
    QTest::qWait(1);
    EXPECT_EQ(bare.ScaleWidth() > 6720, frame == Frame::kSizable || frame == Frame::kSizableWidth);
    EXPECT_EQ(bare.ScaleHeight() > 1665, frame == Frame::kSizable);
  }
  EXPECT_EQ(testForm->Client()->size(), QSize(300, 200));
  EXPECT_GT(testForm->Client()->y(), 10);
  EXPECT_EQ(testForm->Native()->height(), 200 + testForm->Client()->y());
  EXPECT_GE(testForm->ClientTop(), testForm->Client()->y() * kTwipsPerPixel);
  EXPECT_EQ(testForm->Client()->mapToGlobal(QPoint()).y() * kTwipsPerPixel, testForm->Top() + testForm->ClientTop());
}

TEST_F(Forms, AreMadeOnReferenceAndAnewAfterUnload) {
  Unload(testForm);
  TestForm::all_told.clear();
  Unload(testForm);
  EXPECT_TRUE(TestForm::all_told.empty() && !testForm.Loaded());
  testForm.made = [](TestForm&) { TestForm::all_told += "made "; };
  Load(testForm);
  testForm->Tag = "left behind";
  EXPECT_FALSE(testForm->Native()->isVisible());
  testForm->ok.Click = [] { Unload(testForm); };
  testForm->Show();
  QTest::mouseClick(testForm->ok.Native(), Qt::LeftButton);
  EXPECT_FALSE(testForm.Loaded());
  EXPECT_EQ(testForm->Tag, "");
  testForm->Native()->close();
  EXPECT_FALSE(testForm.Loaded());
  testForm.made = nullptr;
  EXPECT_EQ(TestForm::all_told, "made load unload made load unload ");

  struct Stubborn : Form {
    Stubborn() : Form({.scale_width = 1500, .scale_height = 1500, .close_box = false}) { unload = [this] { unloaded = true; }; }
    bool unloaded = false;
  } stubborn;
  stubborn.Show();
  stubborn.Native()->close();
  EXPECT_TRUE(stubborn.Native()->isVisible() && !stubborn.unloaded);
}

TEST_F(Forms, OutOfEveryScreenAreOutOfSight) {
  TestForm& form = *testForm;
  const auto show = [&](double left, double top) {
    form.Left = left;
    form.Top = top;
    QTest::qWait(1);
    return form.Native()->isVisible();
  };
  EXPECT_TRUE(show(1500, 750));
  EXPECT_TRUE(form.Left() == 1500 && form.Top() == 750);
  EXPECT_FALSE(show(1500, -9990));
  EXPECT_TRUE(form.Left() == 1500 && form.Top() == -9990);
  form.Show();
  EXPECT_FALSE(form.Native()->isVisible());
  EXPECT_FALSE(show(999990, 750));
  EXPECT_TRUE(show(3000, 1500));
  EXPECT_TRUE(form.Left() == 3000 && form.Top() == 1500);
  form.Hide();
  EXPECT_FALSE(show(1500, 750));
}

TEST_F(Forms, DisabledTakeNoInputAndStayAsTheyAre) {
  TestForm& form = *testForm;
  ASSERT_TRUE(Focus(form.box));
  const auto picture = [&] {
    form.box.Native()->setStyleSheet("");
    return form.ok.Native()->grab().toImage();
  };
  const auto act = [&] {
    Click(form.ok.Native());
    QTest::mouseClick(Native(), Qt::LeftButton, {}, {290, 150});
    QTest::keyClicks(form.box.Native(), "a");
    QTest::keyClick(Native(), Qt::Key_Return);
    QTest::keyClick(Native(), Qt::Key_Escape);
    QTest::keyClick(Native(), Qt::Key_X, Qt::ControlModifier);
    QTest::keyClick(Native(), Qt::Key_M, Qt::AltModifier);
  };
  ASSERT_TRUE(Focus(form.box));
  const QImage enabled = picture();
  form.Enabled = false;
  form.clock.Enabled = true;
  act();
  form.Native()->close();
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(form.box.Text(), "");
  EXPECT_TRUE(form.ok.Native()->isEnabled());
  EXPECT_EQ(picture(), enabled);
  EXPECT_TRUE(Await([&] { return form.told == "tick tick "; })) << form.told;
  form.clock.Enabled = false;
  ASSERT_TRUE(testForm.Loaded());

  form.Enabled = true;
  Told();
  Click(form.ok.Native());
  EXPECT_EQ(Told(), "ok ");
  QTest::keyClicks(form.box.Native(), "a");
  EXPECT_EQ(form.box.Text(), "a");
  EXPECT_EQ(Told(), "key 97 ");
  QTest::keyClick(Native(), Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(Told(), "cut ");
  form.Native()->close();
  EXPECT_FALSE(testForm.Loaded());
}

TEST_F(Forms, ShortcutsActWhereverTheFocusIs) {
  TestForm& form = *testForm;
  form.log.Text = "log";
  form.list.AddItem("line");
  QGuiApplication::clipboard()->setText("before");
  for (Control* control : std::initializer_list<Control*>{&form.box, &form.log, &form.list, &form.ok}) {
    ASSERT_TRUE(Focus(*control));
    form.box.Text = "";
    form.box.Text = "text";
    static_cast<QLineEdit*>(form.box.Native())->selectAll();
    Told();
    for (const auto key : {Qt::Key_C, Qt::Key_X, Qt::Key_Z}) QTest::keyClick(Native(), key, Qt::ControlModifier);
    EXPECT_EQ(Told(), "copy cut undo ");
    EXPECT_EQ(form.box.Text(), "text");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "before");
    EXPECT_TRUE(control->Native()->hasFocus());
  }
}

TEST_F(Forms, EnterAndEscapePressTheirButtons) {
  TestForm& form = *testForm;
  const struct {
    Control& focused;
    Qt::Key key;
    const char* told;
  } cases[] = {{form.box, Qt::Key_Return, "ok "},      {form.box, Qt::Key_Enter, "ok "},
               {form.log, Qt::Key_Return, "ok "},      {form.list, Qt::Key_Return, "ok "},
               {form.other, Qt::Key_Return, "other "}, {form.cancel, Qt::Key_Enter, "cancel "},
               {form.box, Qt::Key_Escape, "key 27 cancel "},  {form.other, Qt::Key_Escape, "cancel "}};
  for (const auto& expected : cases) {
    ASSERT_TRUE(Focus(expected.focused));
    QTest::keyClick(Native(), expected.key);
    EXPECT_EQ(Told(), expected.told);
  }
  form.ok.Enabled = false;
  ASSERT_TRUE(Focus(form.box));
  QTest::keyClick(Native(), Qt::Key_Return);
  EXPECT_EQ(Told(), "");
}

TEST_F(Forms, ShowTheirTitleAsItStands) {
  for (const char* title : {"a&b", "<b>x</b>", "[*]", "x[*]y [*][*]", "J\xC3\xB6rg"}) {
    testForm->Caption = title;
    EXPECT_EQ(Native()->title(), QString(title));
  }
}

TEST_F(Forms, HandOnTheMouseAndTheirSize) {
  QTest::mouseClick(Native(), Qt::LeftButton, {}, {290, 150});
  EXPECT_EQ(Told(), "click ");
  testForm->ScaleWidth = 6000;
  QTest::qWait(1);
  EXPECT_EQ(Told(), "resize ");
}

TEST(Timers, TickAgainAndAgainButNeverFasterThanTheyAreSeen) {
  Timer timer(1);
  int ticks = 0;
  timer.Tick = [&] { ++ticks; };
  QElapsedTimer clock;
  clock.start();
  ASSERT_TRUE(Await([&] { return ticks >= 10; }));
  EXPECT_GE(clock.elapsed(), 140);
  for (const auto& stop : {+[](Timer& t) { t.Interval = 0; }, +[](Timer& t) { t.Enabled = false; }}) {
    stop(timer);
    const int before = ticks;
    QTest::qWait(60);
    EXPECT_EQ(ticks, before);
    timer.Interval = 5;
    timer.Enabled = true;
    EXPECT_TRUE(Await([&] { return ticks > before; }));
  }
}

}  // namespace
}  // namespace morva
