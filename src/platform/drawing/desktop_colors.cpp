#include "platform/drawing/desktop_colors.h"

#include <QGuiApplication>
#include <QPalette>

#include "platform/drawing/contrast.h"

namespace morva {

namespace {

constexpr Color kSystemColor = 0x80000000;  // marks a system colour constant

// From the button face towards the text on it, as far as the text stays readable: panels are shaded from the one to the
// other.
Color Shadow(Color face, Color text) {
  int percent = 100;
  while (percent > 0 && Contrast(text, {Mixed(face, text, percent), Mixed(face, text, percent)}) < kReadable) --percent;
  return Mixed(face, text, percent);
}

}  // namespace

Color GetSysColor(int index) {
  const QPalette palette = QGuiApplication::palette();
  const QColor face = palette.color(QPalette::Active, QPalette::Button);
  switch (kSystemColor | static_cast<Color>(index)) {
    case kWindowBackground:
      return ColorOf(palette.color(QPalette::Active, QPalette::Base));
    case kWindowText:
      return ColorOf(palette.color(QPalette::Active, QPalette::Text));
    case kButtonShadow:
      return Shadow(ColorOf(face), Resolved(kButtonText));
    case kButtonText:
      return ColorOf(palette.color(QPalette::Active, QPalette::ButtonText));
    case kButtonHighlight:
      return ColorOf(palette.color(QPalette::Active, QPalette::Light));
    default:
      return ColorOf(face);
  }
}

Color Resolved(Color color) {
  return (color & kSystemColor) != 0 ? GetSysColor(static_cast<int>(color & 0xFFU)) : color;
}

QColor QtColor(Color color) {
  const QRgb value = Resolved(color);  // with red and blue the other way round
  return QColor(qBlue(value), qGreen(value), qRed(value));
}

Color ColorOf(const QColor& color) { return qRgba(color.blue(), color.green(), color.red(), 0); }

}  // namespace morva
