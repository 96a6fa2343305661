#pragma once

#include <QPainter>
#include <QPalette>
#include <QRect>

namespace morva {

enum class Edge { kSunken, kRaised };

/// How wide an edge is, in pixels: two of the layout, and never less.
int EdgeWidth();

/// Fills the rectangle and leaves an edge round what is painted over its inside. The pixels are
/// those that everything is measured in: the toolkit's own panels stay two dots of the screen wide at every scale.
void PaintEdge(QPainter& painter, QRect place, Edge edge, const QPalette& palette);

/// Marks what has the focus: a ring of a black line and a light one within the rectangle, each so many pixels wide, so
/// that it shows on every ground.
void PaintFocusRing(QPainter& painter, QRect place, int width, const QColor& light = Qt::white);

}  // namespace morva
