#include "platform/drawing/colors.h"

#include <QGuiApplication>
#include <QPalette>

namespace morva {

namespace {

// Text in the shadow colour must be readable on the button face, whichever way the desktop's scheme leans.
QColor Shadow(const QColor& face) { return face.lightness() > 100 ? face.darker(210) : face.lighter(230); }

Color ColorOf(const QColor& color) {
  return static_cast<Color>(color.red()) | static_cast<Color>(color.green()) << 8U |
         static_cast<Color>(color.blue()) << 16U;
}

}  // namespace

Color GetSysColor(int index) {
  const QPalette palette = QGuiApplication::palette();
  const QColor face = palette.color(QPalette::Active, QPalette::Button);
  switch (index) {
    case 5:
      return ColorOf(palette.color(QPalette::Active, QPalette::Base));
    case 8:
      return ColorOf(palette.color(QPalette::Active, QPalette::Text));
    case 16:
      return ColorOf(Shadow(face));
    case 18:
      return ColorOf(palette.color(QPalette::Active, QPalette::ButtonText));
    case 20:
      return ColorOf(palette.color(QPalette::Active, QPalette::Light));
    default:
      return ColorOf(face);
  }
}

Color Resolved(Color color) {
  return (color & 0x80000000U) != 0 ? GetSysColor(static_cast<int>(color & 0xFFU)) : color;
}

}  // namespace morva
