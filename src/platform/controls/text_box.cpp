#include "platform/controls/text_box.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <climits>

#include "platform/controls/native.h"
#include "platform/controls/qt_keys.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

class InputLine : public QLineEdit {
 public:
  std::function<void(int)> key_press;

 protected:
  // The toolkit would select what stands in a line that Tab has led to: the next letter would take its place.
  void focusInEvent(QFocusEvent* event) override {
    QFocusEvent plain(QEvent::FocusIn, Qt::OtherFocusReason);
    QLineEdit::focusInEvent(event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ? &plain
                                                                                                               : event);
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (!IsEnter(*event) && !event->text().isEmpty() && key_press) key_press(event->text().front().unicode());
    QLineEdit::keyPressEvent(event);
  }
  void inputMethodEvent(QInputMethodEvent* event) override {
    if (!event->commitString().isEmpty() && key_press) key_press(event->commitString().front().unicode());
    QLineEdit::inputMethodEvent(event);
  }
};

}  // namespace

TextBox::TextBox()
    : Control(std::make_unique<InputLine>()),
      Text({}, [this] { As<QLineEdit>(*this).setText(QtText(Text())); }),
      SelStart(
          0,
          [this] {
            As<QLineEdit>(*this).deselect();
            As<QLineEdit>(*this).setCursorPosition(SelStart.Assigned());
          },
          [this] {
            const auto& line = As<QLineEdit>(*this);
            return line.hasSelectedText() ? line.selectionStart() : line.cursorPosition();
          }),
      SelLength(
          0, [this] { As<QLineEdit>(*this).setSelection(SelStart(), SelLength.Assigned()); },
          [this] { return As<QLineEdit>(*this).selectionLength(); }) {
  Kind = SpokenKind::kLine;
  auto& line = As<InputLine>(*this);
  line.setMaxLength(INT_MAX);
  line.key_press = [this](int key) {
    if (KeyPress) KeyPress(key);
  };
  QObject::connect(&line, &QLineEdit::textChanged, [this](const QString& text) { Store(Text, StdText(text)); });
}

void TextBox::SelectAll() { As<QLineEdit>(*this).selectAll(); }

}  // namespace morva
