#include "platform/drawing/fonts.h"

#include <QFontMetrics>
#include <QStringList>
#include <algorithm>

#include "platform/drawing/pixels.h"

namespace morva {

QFont ProgramFont(double points, bool bold) {
  QFont font;
  font.setFamilies({"Tahoma", "Liberation Sans", "Arial", "DejaVu Sans"});
  font.setPixelSize(ToPixels(points * 20));
  font.setBold(bold);
  return font;
}

QFont Fitted(QFont font, const QString& text, int width) {
  constexpr int kNarrowest = 75;  // per cent
  constexpr int kSmallest = 5;    // pixels
  const auto needed = [&] { return QFontMetrics(font).horizontalAdvance(text); };
  if (needed() > width && width > 0) font.setStretch(std::max(kNarrowest, 99 * width / needed()));
  while (font.pixelSize() > kSmallest && needed() > width) font.setPixelSize(font.pixelSize() - 1);
  return font;
}

}  // namespace morva
