#include "platform/controls/text_log.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextDocumentFragment>
#include <algorithm>

#include "platform/drawing/pixels.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

constexpr double kTabStop = 1200;  // twips

// Laying out a run without blanks takes time with the square of its length: long ones get places where they may break.
QString WithBreaks(const QString& text) {
  constexpr int kLongest = 200;
  constexpr QChar kBreak(0x200B);
  QString result;
  int run = 0;
  for (const QChar c : text) {
    run = c.isSpace() ? 0 : run + 1;
    if (run > kLongest && !c.isLowSurrogate()) {
      result += kBreak;
      run = 1;
    }
    result += c;
  }
  return result;
}

}  // namespace

TextLog::TextLog()
    : Control(std::make_unique<QPlainTextEdit>()),
      Text({},
           [this] {
             unshown_.clear();
             As<QPlainTextEdit>(*this).setPlainText(WithBreaks(QtText(Text())));
           }),
      SelStart(0, [this] { later_.Request(); }),
      later_([this] { Show(); }) {
  auto& log = As<QPlainTextEdit>(*this);
  log.setTabStopDistance(ToPixels(kTabStop));
  log.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  log.setUndoRedoEnabled(false);
  log.setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  log.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  log.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void TextLog::Append(const std::string& more) {
  StoreMore(Text, more);
  unshown_ += more;
  later_.Request();
}

void TextLog::HideCaret() { As<QPlainTextEdit>(*this).setCursorWidth(0); }

void TextLog::ScrollPages(int pages) {
  QScrollBar& bar = *As<QPlainTextEdit>(*this).verticalScrollBar();
  bar.setValue(bar.value() + pages * bar.pageStep());
}

std::string TextLog::ShownText() const {
  const auto& log = As<QPlainTextEdit>(*this);
  QTextCursor shown = log.cursorForPosition(QPoint(0, 0));
  shown.setPosition(log.cursorForPosition(log.viewport()->rect().bottomRight()).position(), QTextCursor::KeepAnchor);
  return StdText(shown.selection().toPlainText().remove(QChar(0x200B)));
}

void TextLog::Show() {
  auto& log = As<QPlainTextEdit>(*this);
  QTextCursor cursor(log.document());
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(WithBreaks(QtText(unshown_).remove('\r')));
  unshown_.clear();
  cursor.setPosition(std::min(SelStart(), cursor.position()));
  log.setTextCursor(cursor);
  log.ensureCursorVisible();
}

void TextLog::Rescale() {
  Control::Rescale();
  As<QPlainTextEdit>(*this).setTabStopDistance(ToPixels(kTabStop));
  if (SelStart() == kEnd) later_.Request();
}

}  // namespace morva
