#pragma once

#include <QFont>

namespace morva {

/// The program's font in a size of points of 20 twips.
QFont ProgramFont(double points = 8.25, bool bold = false);
/// The font, as much condensed as it takes for the line of text to fit the width in pixels, and where that is not
/// enough, smaller.
QFont Fitted(QFont font, const QString& text, int width);

}  // namespace morva
