#include "platform/drawing/colors.h"

#include <QColor>

namespace morva {

Color ColorOf(const QColor& color) {
  return static_cast<Color>(color.red()) | static_cast<Color>(color.green()) << 8U |
         static_cast<Color>(color.blue()) << 16U;
}

Color Mixed(Color from, Color to, int percent) {
  Color mixed = 0;
  for (const int shift : {0, 8, 16}) {
    const auto channel = [shift](Color color) { return static_cast<int>(color >> shift & 0xFFU); };
    mixed |= static_cast<Color>(channel(from) + (channel(to) - channel(from)) * percent / 100) << shift;
  }
  return mixed;
}

}  // namespace morva
