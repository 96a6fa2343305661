#pragma once

class QEvent;
class QSize;

namespace morva {

/// The size of everything in all windows, in steps of 75 to 300 per cent.
class Zoom {
 public:
  /// Begins with the largest step up to 100 per cent at which a framed window with a menu and this client area, in
  /// twips, fits the screen; with the smallest where none does. To be called before there is any window.
  static void BeginFor(double client_width, double client_height);
  /// Begins once more with the frame that the window manager really draws, in pixels, which shows only with the first
  /// window that has one; nothing happens where the user has chosen a size before.
  static void FrameIsKnown(QSize frame);
  /// Changes the size where the event asks for it: Ctrl with plus, minus, zero or the wheel. True: it did.
  static bool Takes(QEvent& event);
};

}  // namespace morva
