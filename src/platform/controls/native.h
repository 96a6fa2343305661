#pragma once

#include <QWidget>

#include "platform/controls/control.h"

namespace morva {

/// The control's widget as the kind that it was made as.
template <class W>
W& As(const Control& control) {
  return *static_cast<W*>(control.Native());
}

/// The keys held down during an event of the mouse or the keyboard, as handlers are told of them.
inline int ShiftOf(Qt::KeyboardModifiers modifiers) {
  return (modifiers.testFlag(Qt::ShiftModifier) ? kShiftKey : 0) +
         (modifiers.testFlag(Qt::ControlModifier) ? kCtrlKey : 0) + (modifiers.testFlag(Qt::AltModifier) ? kAltKey : 0);
}

}  // namespace morva
