#pragma once

#include <QPainter>
#include <QPalette>
#include <QRect>

namespace morva {

enum class Edge { kSunken, kRaised };

/// Fills the rectangle and leaves an edge of two pixels a side round what is painted over its inside. The pixels are
/// those that everything is measured in: the toolkit's own panels stay two dots of the screen wide at every scale.
void PaintEdge(QPainter& painter, QRect place, Edge edge, const QPalette& palette);

}  // namespace morva
