#pragma once

#include <QObject>

namespace morva {

/// Sees every event of the program before its receiver does: keeps the user's input from a disabled window, and begins
/// and feeds the drag.
class InputGate : public QObject {
 public:
  bool eventFilter(QObject* receiver, QEvent* event) override;
};

}  // namespace morva
