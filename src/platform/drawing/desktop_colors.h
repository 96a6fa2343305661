#pragma once

#include "platform/drawing/colors.h"

class QColor;

namespace morva {

/// The desktop's colour with the index 0 to 24, as it is now; an index that names none gives the button face.
Color GetSysColor(int index);

/// The colour value behind a colour: a system colour constant looked up, any other colour as it is.
Color Resolved(Color color);

/// The colour as Qt has it, looked up, and the colour value of one of Qt's.
QColor QtColor(Color color);
Color ColorOf(const QColor& color);

}  // namespace morva
