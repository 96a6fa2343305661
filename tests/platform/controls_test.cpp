#include "platform/controls/label.h"
#include "platform/controls/list_box.h"
#include "platform/controls/text_box.h"
#include "platform/controls/text_log.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QToolTip>

#include "platform/drawing/fonts.h"
#include "platform/window/form.h"
#include "tests/support.h"

namespace morva {
namespace {

struct ControlForm : Form {
  ControlForm() : Form({.scale_width = 6000, .scale_height = 3600}) {
    Place({{"label", label, 0, 0, 6000, 300},
           {"box", box, 0, 300, 6000, 300},
           {"log", log, 0, 600, 6000, 1500},
           {"list", list, 0, 2100, 6000, 1500}});
    Show();
  }
  Label label;
  TextBox box;
  TextLog log;
  ListBox list;
};

/// How far to the right something other than the background is drawn.
int Ink(QWidget* widget) {
  const QImage image = widget->grab().toImage();
  int x = image.width() - 30;
  for (bool bare = true; bare && x > 0; bare ? --x : x) {
    for (int y = 4; y < 16; ++y) bare = bare && image.pixel(x, y) == image.pixel(image.width() - 30, y);
  }
  return x;
}

/// What the tool tip of the widget shows, once it is rendered.
std::string Tip(QWidget* widget) {
  QHelpEvent help(QEvent::ToolTip, QPoint(10, 10), widget->mapToGlobal(QPoint(10, 10)));
  QApplication::sendEvent(widget, &help);
  const QString tip = QToolTip::text();
  QToolTip::hideText();
  EXPECT_TRUE(Await([] { return !QToolTip::isVisible(); }));
  return (Qt::mightBeRichText(tip) ? QTextDocumentFragment::fromHtml(tip).toPlainText() : tip).toStdString();
}

TEST(Controls, ShowTextAsItStands) {
  ControlForm form;
  QWidget* list = static_cast<QAbstractScrollArea*>(form.list.Native())->viewport();
  for (const char* text : {"<b>x</b>", "a&b", "&lt;i&gt; &amp;", "<img src='x'>", "two  blanks"}) {
    form.label.Caption = form.label.ToolTipText = form.log.Text = text;
    form.list.Clear();
    form.list.AddItem(text);
    QTest::qWait(1);
    const int width = QFontMetrics(ProgramFont()).horizontalAdvance(text);
    EXPECT_NEAR(Ink(form.label.Native()), width, 5) << text;
    EXPECT_NEAR(Ink(list), width, 8) << text;
    EXPECT_TRUE(Tip(form.label.Native()) == text && Tip(list) == text) << text;
    EXPECT_EQ(static_cast<QPlainTextEdit*>(form.log.Native())->toPlainText(), text);
  }
}

TEST(Controls, TextBoxesHaveNoLimitAndTellEachKeyBeforeTheText) {
  ControlForm form;
  TextBox& box = form.box;
  const auto& line = *static_cast<QLineEdit*>(box.Native());
  std::string told;
  box.KeyPress = [&](int key) { told += std::to_string(key) + "(" + box.Text() + ") "; };
  QTest::keyClicks(box.Native(), "a ");
  QTest::keyClick(box.Native(), Qt::Key_Backspace);
  QTest::keyClick(box.Native(), Qt::Key_Left);
  EXPECT_EQ(told, "97() 32(a) 8(a ) ");
  box.Text = std::string(100000, 'x');
  EXPECT_TRUE(box.Text().size() == 100000 && line.text().size() == 100000);
  box.Text = "J\xC3\xB6rg";
  box.SelStart = 1;
  box.SelLength = 2;
  EXPECT_TRUE(line.selectedText() == "\xC3\xB6r" && box.SelStart() == 1 && box.SelLength() == 2);
}

TEST(Controls, ListsHoldAHundredThousandLines) {
  ControlForm form;
  ListBox& list = form.list;
  auto* view = static_cast<QAbstractItemView*>(list.Native());
  QElapsedTimer clock;
  clock.start();
  for (int line = 0; line < 100000; ++line) {
    list.AddItem("line " + std::to_string(line));
    list.ListIndex = line;
    list.ItemData(line) = 3 * line;
    if (line % 1000 == 0) QCoreApplication::processEvents();
  }
  QTest::qWait(1);
  EXPECT_LT(clock.elapsed(), 20000);
  EXPECT_TRUE(list.ListCount() == 100000 && list.ListIndex() == 99999 && view->currentIndex().row() == 99999);
  EXPECT_TRUE(list.List(77777) == "line 77777" && list.ItemData(77777) == 3 * 77777);
  EXPECT_EQ(view->verticalScrollBar()->value(), view->verticalScrollBar()->maximum());
  EXPECT_THROW(list.List(100000), std::out_of_range);

  list.ListIndex = 50000;
  QTest::qWait(1);
  const QRect shown = view->visualRect(view->currentIndex());
  QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, shown.center() - QPoint(0, shown.height()));
  EXPECT_EQ(list.ListIndex(), 49999);
  list.AddItem("one more");
  list.Clear();
  QTest::qWait(1);
  EXPECT_TRUE(list.ListCount() == 0 && list.ListIndex() == -1 && view->model()->rowCount() == 0);
  list.AddItem("anew");
  list.ListIndex = 0;
  QTest::qWait(1);
  EXPECT_EQ(view->currentIndex().data().toString(), "anew");
}

TEST(Controls, LogsHoldAHundredThousandLinesAndShowTheirEnd) {
  ControlForm form;
  TextLog& log = form.log;
  auto* view = static_cast<QPlainTextEdit*>(log.Native());
  std::string all;
  for (int line = 0; line < 100000; ++line) {
    const std::string more = "\r\n<Bob>  line " + std::to_string(line);
    log.Append(more);
    all += more;
    if (line % 100 == 99) log.SelStart = TextLog::kEnd;
  }
  QTest::qWait(1);
  QTest::keyClicks(view, "typed");
  EXPECT_TRUE(log.Text() == all && view->document()->blockCount() == 100001);
  EXPECT_EQ(view->document()->lastBlock().text(), "<Bob>  line 99999");
  EXPECT_TRUE(view->viewport()->rect().contains(view->cursorRect()));
  log.Text = "";
  EXPECT_TRUE(view->toPlainText().isEmpty() && log.Text().empty());
  // Half a minute's work for the toolkit, as it stands.
  const std::string endless(400000, 'x');
  QElapsedTimer clock;
  clock.start();
  log.Append(endless);
  QTest::qWait(1);
  EXPECT_LT(clock.elapsed(), 10000);
  EXPECT_TRUE(log.Text() == endless && view->viewport()->rect().contains(view->cursorRect()));
}

}  // namespace
}  // namespace morva
