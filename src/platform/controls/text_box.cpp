#include "platform/controls/text_box.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <climits>
#include <utility>

#include "platform/controls/qt_keys.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

class InputLine : public QLineEdit {
 public:
  std::function<void(int)> key_press;
  std::function<void()> clicked_into;

 protected:
  // Qt would select the whole text when Tab leads here: the next letter would replace it.
  void focusInEvent(QFocusEvent* event) override {
    enters_ = event->reason() == Qt::MouseFocusReason;
    QFocusEvent plain(QEvent::FocusIn, Qt::OtherFocusReason);
    QLineEdit::focusInEvent(event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ? &plain
                                                                                                               : event);
  }
  // The click that has led here puts the cursor where it is; what the box does with the focus comes after that.
  void mousePressEvent(QMouseEvent* event) override {
    pressed_ = event->position().toPoint();
    QLineEdit::mousePressEvent(event);
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    QLineEdit::mouseReleaseEvent(event);
    const int moved = (event->position().toPoint() - pressed_).manhattanLength();
    if (std::exchange(enters_, false) && moved < QApplication::startDragDistance()) clicked_into();
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (!IsEnter(*event) && !event->text().isEmpty() && key_press) key_press(event->text().front().unicode());
    QLineEdit::keyPressEvent(event);
  }
  void inputMethodEvent(QInputMethodEvent* event) override {
    if (!event->commitString().isEmpty() && key_press) key_press(event->commitString().front().unicode());
    QLineEdit::inputMethodEvent(event);
  }

 private:
  bool enters_ = false;  // by a click
  QPoint pressed_;
};

}  // namespace

TextBox::TextBox()
    : Control(std::make_unique<InputLine>()), Text({}, [this] { As<QLineEdit>(*this).setText(QtText(Text())); }) {
  Kind = SpokenKind::kLine;
  auto& line = As<InputLine>(*this);
  line.setMaxLength(INT_MAX);
  line.key_press = [this](int key) {
    if (KeyPress) KeyPress(key);
  };
  line.clicked_into = [this] {
    if (GotFocus) GotFocus();
  };
  QObject::connect(&line, &QLineEdit::textChanged, [this](const QString& text) { Store(Text, StdText(text)); });
}

void TextBox::SelectAll() { As<QLineEdit>(*this).selectAll(); }

}  // namespace morva
