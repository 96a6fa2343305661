#pragma once

#include <QPainter>

namespace morva {

/// The place nearest to the given one whose edges lie between whole dots of the screen, whatever its scale. Places of
/// one size stay alike.
inline QRectF Snapped(const QPainter& painter, const QRectF& place) {
  const QTransform screen = painter.deviceTransform();
  const QRectF dots = screen.mapRect(place);
  return screen.inverted().mapRect(QRectF(dots.topLeft().toPoint(), dots.size().toSize()));
}

}  // namespace morva
