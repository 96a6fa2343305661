#pragma once

#include <QAccessibleWidget>
#include <QLineEdit>

namespace morva {

/// An input line as assistive tools see it. Qt's own answer makes each letter a run of attributes of its own,
/// of which Orca 43 speaks only the first as the line's text.
class SpokenLine : public QAccessibleWidget, public QAccessibleTextInterface, public QAccessibleEditableTextInterface {
 public:
  explicit SpokenLine(QLineEdit& line);
  void* interface_cast(QAccessible::InterfaceType type) override;
  QAccessible::State state() const override;
  QString text(QAccessible::Text kind) const override;
  void setText(QAccessible::Text kind, const QString& text) override;

  QString text(int start, int end) const override;
  int characterCount() const override;
  QRect characterRect(int offset) const override;
  int offsetAtPoint(const QPoint& point) const override;
  void scrollToSubstring(int start, int end) override;
  QString attributes(int offset, int* start, int* end) const override;

  int cursorPosition() const override;
  void setCursorPosition(int position) override;
  int selectionCount() const override;
  void selection(int index, int* start, int* end) const override;
  void addSelection(int start, int end) override;
  void setSelection(int index, int start, int end) override;
  void removeSelection(int index) override;

  void insertText(int offset, const QString& text) override;
  void deleteText(int start, int end) override;
  void replaceText(int start, int end, const QString& text) override;

 private:
  QLineEdit& line_;
};

}  // namespace morva
