#pragma once

#include <QKeyEvent>

#include "platform/controls/keys.h"

namespace morva {

/// The modifier keys, as handlers are told of them.
inline int ShiftOf(Qt::KeyboardModifiers modifiers) {
  return (modifiers.testFlag(Qt::ShiftModifier) ? kShiftKey : 0) +
         (modifiers.testFlag(Qt::ControlModifier) ? kCtrlKey : 0) + (modifiers.testFlag(Qt::AltModifier) ? kAltKey : 0);
}

inline bool IsEnter(const QKeyEvent& event) { return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter; }

}  // namespace morva
