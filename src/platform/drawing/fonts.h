#pragma once

#include <QFont>

namespace morva {

/// The program's font in a size of points of 20 twips.
QFont ProgramFont(double points = 8.25, bool bold = false);

}  // namespace morva
