#pragma once

#include <QFont>

namespace morva {

/// The program's font at a size in points of 20 twips.
QFont ProgramFont(double points = 8.25, bool bold = false);
/// The font condensed, and if need be smaller, so that the line of text fits the width in pixels.
QFont Fitted(QFont font, const QString& text, int width);

}  // namespace morva
