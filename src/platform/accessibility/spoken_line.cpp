#include "platform/accessibility/spoken_line.h"

#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QLineEdit>

namespace morva {

namespace {

class LineInterface : public QAccessibleWidget,
                      public QAccessibleTextInterface,
                      public QAccessibleEditableTextInterface {
 public:
  explicit LineInterface(QLineEdit& line) : QAccessibleWidget(&line, QAccessible::EditableText), line_(line) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface) return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.editable = state.selectableText = 1;
    return state;
  }
  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? line_.text() : QAccessibleWidget::text(kind);
  }
  void setText(QAccessible::Text kind, const QString& text) override {
    if (kind == QAccessible::Value) replaceText(0, characterCount(), text);
  }

  QString text(int start, int end) const override { return line_.text().mid(start, end - start); }
  int characterCount() const override { return static_cast<int>(line_.text().size()); }
  QString attributes(int /*offset*/, int* start, int* end) const override {
    *start = 0;
    *end = characterCount();
    return {};
  }
  // As long as the text fits into the line.
  QRect characterRect(int offset) const override {
    const QFontMetrics metrics(line_.font());
    const int left = metrics.horizontalAdvance(line_.text().left(offset));
    const int right = metrics.horizontalAdvance(line_.text().left(offset + 1));
    return {line_.mapToGlobal(QPoint(left, 0)), QSize(right - left, line_.height())};
  }
  int offsetAtPoint(const QPoint& point) const override {
    const QPoint inside = line_.mapFromGlobal(point);
    return line_.rect().contains(inside) ? line_.cursorPositionAt(inside) : -1;
  }

  int cursorPosition() const override { return line_.cursorPosition(); }
  void setCursorPosition(int position) override { line_.setCursorPosition(position); }
  void scrollToSubstring(int start, int end) override {
    line_.setCursorPosition(end);
    line_.setCursorPosition(start);
  }
  int selectionCount() const override { return line_.hasSelectedText() ? 1 : 0; }
  void selection(int index, int* start, int* end) const override {
    const bool any = index == 0 && line_.hasSelectedText();
    *start = any ? line_.selectionStart() : 0;
    *end = any ? line_.selectionEnd() : 0;
  }
  void addSelection(int start, int end) override { setSelection(0, start, end); }
  void setSelection(int index, int start, int end) override {
    if (index == 0) line_.setSelection(start, end - start);
  }
  void removeSelection(int index) override {
    if (index == 0) line_.deselect();
  }

  void insertText(int offset, const QString& text) override { replaceText(offset, offset, text); }
  void deleteText(int start, int end) override { replaceText(start, end, {}); }
  // By way of an input method: whatever keeps the user from typing keeps an assistive tool from it.
  void replaceText(int start, int end, const QString& text) override {
    if (!line_.isEnabled()) return;
    line_.setCursorPosition(start);
    QInputMethodEvent typed;
    typed.setCommitString(text, 0, end - start);
    QCoreApplication::sendEvent(&line_, &typed);
  }

 private:
  QLineEdit& line_;
};

}  // namespace

QAccessibleInterface* SpokenLine(QLineEdit& line) { return new LineInterface(line); }

}  // namespace morva
