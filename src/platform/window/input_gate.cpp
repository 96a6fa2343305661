#include "platform/window/input_gate.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

#include "platform/controls/control.h"
#include "platform/window/drag.h"
#include "platform/window/key_input.h"
#include "platform/window/native_window.h"
#include "platform/window/zoom.h"

namespace morva {

namespace {

bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::InputMethod:
    case QEvent::Close:
    case QEvent::Drop:
      return true;
    default:
      return false;
  }
}

bool IsShortcutOf(const QWidget& window, const QKeyEvent& key) {
  const QKeySequence pressed(key.keyCombination());
  const auto actions = window.findChildren<QAction*>();
  return std::any_of(actions.begin(), actions.end(),
                     [&](const QAction* action) { return action->shortcut() == pressed; });
}

// The shortcuts of a window act in its tool window, too: not while it takes no input.
bool IsShortcutOfDisabled(const NativeWindow& window, const QEvent& event) {
  if (event.type() != QEvent::ShortcutOverride || window.windowType() != Qt::Tool) return false;
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

// Whether the user's key is meant for another window than the one that got it.
bool IsTypedElsewhere(const NativeWindow* window, const QEvent& event) {
  const bool key = event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease;
  if (window == nullptr || !key || !event.spontaneous()) return false;
  const NativeWindow* focused = NativeWindow::Of(QApplication::focusWidget());
  return focused != nullptr && focused != window && (focused->SharesKeys() || window->SharesKeys());
}

// A menu comes up at a place on the screen, and a window grows from its own.
bool NeedsPlace(QEvent::Type type) {
  return type == QEvent::MouseButtonPress || type == QEvent::ShortcutOverride || type == QEvent::Wheel;
}

}  // namespace

bool InputGate::eventFilter(QObject* receiver, QEvent* event) {
  const bool input = IsInput(event->type());
  const bool activation = event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate;
  if (!input && !activation) return false;
  if (!receiver->isWidgetType()) return false;
  const auto& widget = *static_cast<QWidget*>(receiver);
  if (Drag::Takes(widget, *event)) return true;
  NativeWindow* window = NativeWindow::Of(&widget);
  if (!input) return false;
  if (window != nullptr && (!window->takes_input || IsShortcutOfDisabled(*window, *event))) {
    // An accepted override keeps a shortcut from acting; an ignored close keeps the window.
    event->setAccepted(event->type() != QEvent::Close);
    return true;
  }
  if (IsTypedElsewhere(window, *event)) {
    QApplication::sendEvent(QApplication::focusWidget(), event);
    event->accept();
    return true;
  }
  if (window != nullptr && NeedsPlace(event->type())) window->MendPlace();
  if (Zoom::Takes(*event)) return true;
  if (window == nullptr) return false;
  if (event->type() == QEvent::ShortcutOverride && IsShortcutOf(*window, *static_cast<QKeyEvent*>(event))) {
    // A line edit would claim the key before the menu sees it.
    event->ignore();
    return true;
  }
  if (event->type() == QEvent::KeyPress) return TakeKey(widget, *window, *static_cast<QKeyEvent*>(event));
  return BeginsDrag(widget, *event);
}

}  // namespace morva
