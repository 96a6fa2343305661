#include "platform/drawing/edge.h"

#include <QRegion>
#include <algorithm>
#include <array>

#include "platform/drawing/pixels.h"

namespace morva {

namespace {

struct Ring {
  QPalette::ColorRole upper_left, lower_right;
};

constexpr std::array<Ring, 2> kSunken{{{QPalette::Dark, QPalette::Light}, {QPalette::Shadow, QPalette::Button}}};
constexpr std::array<Ring, 2> kRaised{{{QPalette::Light, QPalette::Shadow}, {QPalette::Midlight, QPalette::Dark}}};

}  // namespace

int EdgeWidth() { return std::max(2, ToPixels(2 * kTwipsPerPixel)); }

void PaintEdge(QPainter& painter, QRect place, Edge edge, const QPalette& palette) {
  int width = EdgeWidth() - EdgeWidth() / 2;
  for (const Ring& ring : edge == Edge::kSunken ? kSunken : kRaised) {
    painter.fillRect(place, palette.color(ring.lower_right));
    painter.fillRect(place.adjusted(0, 0, -width, -width), palette.color(ring.upper_left));
    place.adjust(width, width, -width, -width);
    width = EdgeWidth() / 2;
  }
  painter.fillRect(place, palette.color(QPalette::Button));
}

void PaintFocusRing(QPainter& painter, QRect place, int width, const QColor& light) {
  for (const QColor& color : {QColor(Qt::black), light}) {
    const QRect inside = place.adjusted(width, width, -width, -width);
    for (const QRect& line : QRegion(place) - inside) painter.fillRect(line, color);
    place = inside;
  }
}

}  // namespace morva
