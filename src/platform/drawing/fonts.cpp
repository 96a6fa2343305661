#include "platform/drawing/fonts.h"

#include <QStringList>

#include "platform/drawing/pixels.h"

namespace morva {

QFont ProgramFont(double points, bool bold) {
  QFont font;
  font.setFamilies({"Tahoma", "Liberation Sans", "Arial", "DejaVu Sans"});
  font.setPixelSize(ToPixels(points * 20));
  font.setBold(bold);
  return font;
}

}  // namespace morva
