#pragma once

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace morva {

/// The nearest place whose edges lie between device pixels, at whatever scale. Places of one size stay alike.
inline QRectF Snapped(const QPainter& painter, const QRectF& place) {
  const QTransform screen = painter.deviceTransform();
  const QRectF pixels = screen.mapRect(place);
  return screen.inverted().mapRect(QRectF(pixels.topLeft().toPoint(), pixels.size().toSize()));
}

/// The largest square of whole device pixels within the place, at its upper left.
inline QRectF SquareWithin(const QPainter& painter, const QRectF& place) {
  const QTransform screen = painter.deviceTransform();
  const QRectF pixels = screen.mapRect(place);
  const QPointF corner(std::ceil(pixels.left()), std::ceil(pixels.top()));
  const double side = std::floor(std::min(pixels.right() - corner.x(), pixels.bottom() - corner.y()));
  return screen.inverted().mapRect(QRectF(corner, QSizeF(side, side)));
}

}  // namespace morva
