#pragma once

#include <QPoint>
#include <optional>

class QWindow;

namespace morva {

/// Whether the windows are on an X server within a Wayland session. That server knows where the session has moved a
/// window to, but the toolkit is not told.
bool XWithinWayland();

/// Where a window's inside is, in the toolkit's pixels.
struct XPlace {
  QPoint on_screen, in_frame;
  int shadow;  ///< of the frame on each side; none but where Weston draws it
};

/// Where that X server has the window; nothing on any other platform.
std::optional<XPlace> PlaceByX(const QWindow& window);

}  // namespace morva
