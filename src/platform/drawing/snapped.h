#pragma once

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace morva {

/// The place nearest to the given one whose edges lie between whole dots of the screen, whatever its scale. Places of
/// one size stay alike.
inline QRectF Snapped(const QPainter& painter, const QRectF& place) {
  const QTransform screen = painter.deviceTransform();
  const QRectF dots = screen.mapRect(place);
  return screen.inverted().mapRect(QRectF(dots.topLeft().toPoint(), dots.size().toSize()));
}

/// The largest square of whole dots within the place, at its upper left.
inline QRectF SquareWithin(const QPainter& painter, const QRectF& place) {
  const QTransform screen = painter.deviceTransform();
  const QRectF dots = screen.mapRect(place);
  const QPointF corner(std::ceil(dots.left()), std::ceil(dots.top()));
  const double side = std::floor(std::min(dots.right() - corner.x(), dots.bottom() - corner.y()));
  return screen.inverted().mapRect(QRectF(corner, QSizeF(side, side)));
}

}  // namespace morva
