#include "platform/window/input.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <algorithm>
#include <iterator>
#include <typeinfo>
#include <utility>

#include "platform/controls/control.h"
#include "platform/controls/qt_keys.h"
#include "platform/window/drag.h"
#include "platform/window/native_window.h"
#include "platform/window/zoom.h"

namespace morva {

namespace {

constexpr int kUnseenMs = 700;  // how long a window that has just come is not what an Enter was meant for

bool IsKey(QEvent::Type type) {
  return type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::ShortcutOverride;
}

bool PressesEnter(const QEvent& event) {
  return event.type() == QEvent::KeyPress && IsEnter(static_cast<const QKeyEvent&>(event));
}

// Arrows, Home, End and the Page keys.
bool MovesCursor(int key) { return key >= Qt::Key_Home && key <= Qt::Key_PageDown; }

// The arrows of a board or of a group of options lead from one control to the next of its kind.
bool IsAlike(const QWidget& a, const QWidget& b) {
  return &a == &b || (a.window() == b.window() && typeid(a) == typeid(b));
}

// Whether the user acts by it, and does not just point at something.
bool IsInput(const QEvent& event) {
  switch (event.type()) {
    case QEvent::InputMethod:
    case QEvent::Close:
    case QEvent::Drop:
      return true;
    case QEvent::Enter:
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::HoverLeave:
      return false;
    default:
      return event.isInputEvent();
  }
}

bool IsShortcutOf(const QWidget& window, const QKeyEvent& key) {
  const QKeySequence pressed(key.keyCombination());
  const auto actions = window.findChildren<QAction*>();
  return std::any_of(actions.begin(), actions.end(),
                     [&](const QAction* action) { return action->shortcut() == pressed; });
}

// The shortcuts of a window act in its tool window and its child windows, too: not while it takes no input.
bool IsShortcutOfDisabled(const NativeWindow& window, const QEvent& event) {
  if (event.type() != QEvent::ShortcutOverride) return false;
  const NativeWindow* owner = NativeWindow::Of(window.parentWidget());
  return owner != nullptr && !owner->takes_input;
}

bool BeginsDrag(const QWidget& widget, const QEvent& event) {
  if (event.type() != QEvent::MouseButtonPress && event.type() != QEvent::MouseButtonDblClick) return false;
  const auto& press = static_cast<const QMouseEvent&>(event);
  Control* control = ControlOf(&widget);
  if (press.button() != Qt::LeftButton || control == nullptr || !control->AutomaticDrag) return false;
  Drag::Begin(*control, press);
  return true;
}

constexpr std::pair<Qt::Key, Key> kKeys[] = {
    {Qt::Key_Left, Key::kLeft},     {Qt::Key_Up, Key::kUp},
    {Qt::Key_Right, Key::kRight},   {Qt::Key_Down, Key::kDown},
    {Qt::Key_Home, Key::kHome},     {Qt::Key_End, Key::kEnd},
    {Qt::Key_PageUp, Key::kPageUp}, {Qt::Key_PageDown, Key::kPageDown},
    {Qt::Key_Space, Key::kSpace},   {Qt::Key_Return, Key::kEnter},
    {Qt::Key_Enter, Key::kEnter},   {Qt::Key_Escape, Key::kEscape},
    {Qt::Key_Menu, Key::kMenu},     {Qt::Key_F6, Key::kF6},
    {Qt::Key_T, Key::kT},
};

Key KeyOf(const QKeyEvent& event) {
  const auto* known =
      std::find_if(std::begin(kKeys), std::end(kKeys), [&](const auto& key) { return key.first == event.key(); });
  return known == std::end(kKeys) ? Key::kOther : known->second;
}

// Modifier keys alone are ignored.
bool IsModifier(int key) {
  return (key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) || key == Qt::Key_Super_L || key == Qt::Key_Super_R ||
         key == Qt::Key_AltGr;
}

// Offers a pressed key, unless it is a modifier, to the control that has the focus, then to its form. receiver is what
// Qt gives the key to. True: one of them has used it.
bool TakeKey(const QWidget& receiver, NativeWindow& window, const QKeyEvent& event) {
  // What the control with the focus leaves alone comes by once more for each widget that it stands on.
  const QWidget* focus = window.focusWidget();
  if (&receiver != (focus != nullptr ? focus : &window) || IsModifier(event.key())) return false;
  const bool menu = event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier;
  const Key key = menu ? Key::kMenu : KeyOf(event);
  const int shift = menu ? 0 : ShiftOf(event.modifiers());
  const Control* control = ControlOf(&receiver);
  return (control != nullptr && control->KeyDown && control->KeyDown(key, shift)) ||
         window.Events().Form_KeyDown(key, shift);
}

}  // namespace

bool HeldKeys::LetThrough(const QWidget& widget, const QKeyEvent& event) {
  if (event.type() == QEvent::KeyRelease) {
    released_ = event.key();
    released_at_ = event.timestamp();
    return true;
  }
  const QWidget* receiver = widget.focusProxy() != nullptr ? widget.focusProxy() : &widget;
  if (!IsRepeat(event)) {
    Note(*receiver, event);
    return true;
  }
  const QPointer<const QWidget> got_press = pressed_[event.key()];
  if (got_press == nullptr) return false;
  if (MovesCursor(event.key())) return IsAlike(*got_press, *receiver);
  return got_press == receiver && qobject_cast<const QLineEdit*>(receiver) != nullptr && WritesText(event);
}

// A press begins with an override. Where that ends in a shortcut, or the key acts once, nobody has got the press: the
// key can go on as a letter when Ctrl is let go first.
void HeldKeys::Note(const QWidget& receiver, const QKeyEvent& event) {
  if (event.type() == QEvent::ShortcutOverride) {
    pressed_.erase(event.key());
    return;
  }
  // What the control with the focus leaves alone comes by once more for each widget that it stands on.
  const QWidget* focus = receiver.window()->focusWidget();
  const bool first = focus == nullptr || focus == &receiver;
  if (first && (MovesCursor(event.key()) || WritesText(event))) pressed_[event.key()] = &receiver;
}

// An X server repeats a release and a press at a time; Qt joins them only where it gets both at once.
bool HeldKeys::IsRepeat(const QKeyEvent& event) const {
  const bool of_keyboard = event.nativeScanCode() != 0;
  // What has gone by way of a screen reader has no time.
  const bool at_once = event.timestamp() != 0 && event.timestamp() == released_at_;
  return event.isAutoRepeat() || (of_keyboard && event.key() == released_ && at_once);
}

void InputGate::NoteComing(const QWidget& widget, const QEvent& event) {
  if (event.type() == QEvent::Show && !event.spontaneous() && NativeWindow::Of(&widget) == &widget) {
    newest_ = &widget;
    newest_seen_.invalidate();
  } else if (event.type() == QEvent::Paint && !newest_seen_.isValid() && widget.window() == newest_) {
    newest_seen_.start();
  }
}

bool InputGate::HasJustCome(const QWidget& window) const {
  return newest_ == &window && (!newest_seen_.isValid() || newest_seen_.elapsed() < kUnseenMs);
}

bool InputGate::eventFilter(QObject* receiver, QEvent* event) {
  if (!receiver->isWidgetType()) return false;
  const auto& widget = *static_cast<QWidget*>(receiver);
  NoteComing(widget, *event);
  const bool input = IsInput(*event);
  const bool activation = event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate;
  if (!input && !activation) return false;
  if (IsKey(event->type()) && !held_.LetThrough(widget, *static_cast<QKeyEvent*>(event))) {
    event->accept();  // an accepted override keeps a shortcut from acting
    return true;
  }
  if (Drag::Takes(widget, *event)) return true;
  NativeWindow* window = NativeWindow::Of(&widget);
  if (!input) return false;
  if (window != nullptr && (!window->takes_input || IsShortcutOfDisabled(*window, *event))) {
    // An accepted override keeps a shortcut from acting; an ignored close keeps the window.
    event->setAccepted(event->type() != QEvent::Close);
    return true;
  }
  if (Zoom::Takes(*event)) return true;
  if (window == nullptr) return false;
  if (event->type() == QEvent::ShortcutOverride && IsShortcutOf(*window, *static_cast<QKeyEvent*>(event))) {
    // A line edit would claim the key before the menu sees it.
    event->ignore();
    return true;
  }
  // Where no button is the default one, Enter presses what has the focus, be it the only one, Cancel.
  if (window->default_button == nullptr && PressesEnter(*event) && HasJustCome(*window)) {
    event->accept();
    return true;
  }
  if (event->type() == QEvent::KeyPress) return TakeKey(widget, *window, *static_cast<QKeyEvent*>(event));
  return BeginsDrag(widget, *event);
}

}  // namespace morva
