#pragma once

#include <QEvent>
#include <QMouseEvent>
#include <QWidget>

namespace morva {

class Control;
class NativeWindow;

/// The automatic drag: the press holds the pointer, and what is under it hears of the drag. There is at most one.
class Drag {
 public:
  /// Starts with a press on source at a place on the screen.
  static void Begin(Control& source, const QMouseEvent& press);
  /// Ends a drag of this window without a drop.
  static void Abandon(const NativeWindow& window);
  /// Looks anew at what is under the pointer, after everything has got another size.
  static void GoOnAtNewSize();
  /// Gives an event of the program to the drag; true: the drag has taken it.
  static bool Takes(const QWidget& receiver, QEvent& event);
};

}  // namespace morva
