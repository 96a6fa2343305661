#pragma once

#include <QPainter>
#include <QPalette>
#include <QRect>

namespace morva {

enum class Edge { kSunken, kRaised };

/// The width of an edge in pixels: two of the layout, but never less than two.
int EdgeWidth();

/// Fills the rectangle and draws an edge along its inside. The edge grows with the zoom; that of Qt's own panels does
/// not.
void PaintEdge(QPainter& painter, QRect place, Edge edge, const QPalette& palette);

/// Marks the focus by a black and a light ring within the rectangle, each that many pixels wide, to be seen on every
/// background.
void PaintFocusRing(QPainter& painter, QRect place, int width, const QColor& light = Qt::white);

}  // namespace morva
