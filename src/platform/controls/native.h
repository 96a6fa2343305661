#pragma once

#include <QWidget>

#include "platform/controls/control.h"

namespace morva {

/// The control's widget, as the class that it is of.
template <class W>
W& As(const Control& control) {
  return *static_cast<W*>(control.Native());
}

}  // namespace morva
