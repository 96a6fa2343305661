#include "platform/window/key_input.h"

#include <QKeyEvent>

#include "platform/controls/control.h"
#include "platform/window/native_window.h"

namespace morva {

namespace {

Key KeyOf(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Left:
      return Key::kLeft;
    case Qt::Key_Up:
      return Key::kUp;
    case Qt::Key_Right:
      return Key::kRight;
    case Qt::Key_Down:
      return Key::kDown;
    case Qt::Key_Home:
      return Key::kHome;
    case Qt::Key_End:
      return Key::kEnd;
    case Qt::Key_PageUp:
      return Key::kPageUp;
    case Qt::Key_PageDown:
      return Key::kPageDown;
    case Qt::Key_Space:
      return Key::kSpace;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return Key::kEnter;
    case Qt::Key_Escape:
      return Key::kEscape;
    case Qt::Key_Menu:
      return Key::kMenu;
    case Qt::Key_F10:
      return event.modifiers() == Qt::ShiftModifier ? Key::kMenu : Key::kOther;
    case Qt::Key_F6:
      return Key::kF6;
    case Qt::Key_T:
      return Key::kT;
    default:
      return Key::kOther;
  }
}

int ShiftOf(const QKeyEvent& event) {
  return event.key() == Qt::Key_F10 ? 0 : static_cast<int>(event.modifiers() >> 25U) & 7;
}

}  // namespace

bool TakeKey(const QWidget& receiver, NativeWindow& window, const QKeyEvent& event) {
  // What the control with the focus leaves alone comes by once more for each widget that it stands on.
  const QWidget* focus = window.focusWidget();
  if (&receiver != (focus != nullptr ? focus : &window)) return false;
  const Key key = KeyOf(event);
  const int shift = ShiftOf(event);
  const Control* control = ControlOf(&receiver);
  return (control != nullptr && control->KeyDown && control->KeyDown(key, shift)) ||
         window.Events().Form_KeyDown(key, shift);
}

}  // namespace morva
