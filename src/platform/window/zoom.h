#pragma once

class QEvent;

namespace morva {

/// The zoom of all windows, in steps of 75 to 300 per cent. It stops at the largest step at which the main window, and
/// the tool window beside it, can be seen whole.
class Zoom {
 public:
  /// Begins with the largest step up to 100 per cent at which a framed window with a menu and this client area fits the
  /// screen, and with the smallest where none does: first with a usual frame, and once more with the frame that the
  /// window manager draws, unless the user has chosen a step before. `beside` is the width of the window that is to
  /// stand at its side. All in twips. To be called before there is any window.
  static void BeginFor(double client_width, double client_height, double beside);
  /// Zooms where the event asks for it: Ctrl with plus, minus, zero or the wheel. True: it did. Nothing changes while
  /// the disc flies.
  static bool Takes(QEvent& event);
};

}  // namespace morva
