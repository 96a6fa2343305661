#include "platform/accessibility/spoken_line.h"

#include <QCoreApplication>
#include <QInputMethodEvent>

namespace morva {

SpokenLine::SpokenLine(QLineEdit& line) : QAccessibleWidget(&line, QAccessible::EditableText), line_(line) {}

void* SpokenLine::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
  if (type == QAccessible::EditableTextInterface) return static_cast<QAccessibleEditableTextInterface*>(this);
  return QAccessibleWidget::interface_cast(type);
}

QAccessible::State SpokenLine::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  state.editable = state.selectableText = 1;
  return state;
}

QString SpokenLine::text(QAccessible::Text kind) const {
  return kind == QAccessible::Value ? line_.text() : QAccessibleWidget::text(kind);
}

void SpokenLine::setText(QAccessible::Text kind, const QString& text) {
  if (kind == QAccessible::Value) replaceText(0, characterCount(), text);
}

QString SpokenLine::text(int start, int end) const { return line_.text().mid(start, end - start); }

int SpokenLine::characterCount() const { return static_cast<int>(line_.text().size()); }

// As long as the text fits into the line.
QRect SpokenLine::characterRect(int offset) const {
  const QFontMetrics metrics(line_.font());
  const int left = metrics.horizontalAdvance(line_.text().left(offset));
  const int right = metrics.horizontalAdvance(line_.text().left(offset + 1));
  return {line_.mapToGlobal(QPoint(left, 0)), QSize(right - left, line_.height())};
}

int SpokenLine::offsetAtPoint(const QPoint& point) const {
  return line_.rect().contains(line_.mapFromGlobal(point)) ? line_.cursorPositionAt(line_.mapFromGlobal(point)) : -1;
}

void SpokenLine::scrollToSubstring(int start, int end) {
  line_.setCursorPosition(end);
  line_.setCursorPosition(start);
}

QString SpokenLine::attributes(int /*offset*/, int* start, int* end) const {
  *start = 0;
  *end = characterCount();
  return {};
}

int SpokenLine::cursorPosition() const { return line_.cursorPosition(); }

void SpokenLine::setCursorPosition(int position) { line_.setCursorPosition(position); }

int SpokenLine::selectionCount() const { return line_.hasSelectedText() ? 1 : 0; }

void SpokenLine::selection(int index, int* start, int* end) const {
  const bool any = index == 0 && line_.hasSelectedText();
  *start = any ? line_.selectionStart() : 0;
  *end = any ? line_.selectionEnd() : 0;
}

void SpokenLine::addSelection(int start, int end) { setSelection(0, start, end); }

void SpokenLine::setSelection(int index, int start, int end) {
  if (index == 0) line_.setSelection(start, end - start);
}

void SpokenLine::removeSelection(int index) {
  if (index == 0) line_.deselect();
}

void SpokenLine::insertText(int offset, const QString& text) { replaceText(offset, offset, text); }

void SpokenLine::deleteText(int start, int end) { replaceText(start, end, {}); }

// By way of an input method: whatever keeps the user from typing keeps an assistive tool from it.
void SpokenLine::replaceText(int start, int end, const QString& text) {
  if (!line_.isEnabled()) return;
  line_.setCursorPosition(start);
  QInputMethodEvent typed;
  typed.setCommitString(text, 0, end - start);
  QCoreApplication::sendEvent(&line_, &typed);
}

}  // namespace morva
