#include "platform/drawing/colors.h"

#include <QGuiApplication>
#include <QPalette>
#include <array>
#include <cmath>

namespace morva {

namespace {

constexpr int Channel(Color color, int shift) { return static_cast<int>(color >> shift & 0xFFU); }

double Luminance(Color color) {
  static const std::array<double, 256> kLinear = [] {
    std::array<double, 256> linear{};
    for (std::size_t v = 0; v < linear.size(); ++v) {
      const double part = static_cast<double>(v) / 255;
      linear[v] = part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    }
    return linear;
  }();
  const auto linear = [color](int shift) { return kLinear[static_cast<std::size_t>(Channel(color, shift))]; };
  return 0.2126 * linear(0) + 0.7152 * linear(8) + 0.0722 * linear(16);
}

Color Mixed(Color from, Color to, int percent) {
  Color mixed = 0;
  for (const int shift : {0, 8, 16}) {
    const int channel = Channel(from, shift) + (Channel(to, shift) - Channel(from, shift)) * percent / 100;
    mixed |= static_cast<Color>(channel) << shift;
  }
  return mixed;
}

// As far from the face towards the text on it as the text bears: panels are shaded from the one to the other.
Color Shadow(Color face, Color text) {
  int percent = 100;
  while (percent > 0 && Contrast(text, {Mixed(face, text, percent), Mixed(face, text, percent)}) < kReadable) --percent;
  return Mixed(face, text, percent);
}

}  // namespace

Color ColorOf(const QColor& color) {
  return static_cast<Color>(color.red()) | static_cast<Color>(color.green()) << 8U |
         static_cast<Color>(color.blue()) << 16U;
}

Color GetSysColor(int index) {
  const QPalette palette = QGuiApplication::palette();
  const QColor face = palette.color(QPalette::Active, QPalette::Button);
  switch (index) {
    case 5:
      return ColorOf(palette.color(QPalette::Active, QPalette::Base));
    case 8:
      return ColorOf(palette.color(QPalette::Active, QPalette::Text));
    case 16:
      return Shadow(ColorOf(face), GetSysColor(18));
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

Ground With(Ground ground, Color color) {
  const double own = Luminance(color);
  if (own < Luminance(ground.darkest)) ground.darkest = color;
  if (own > Luminance(ground.lightest)) ground.lightest = color;
  return ground;
}

double Contrast(Color color, Ground ground) {
  const double own = Luminance(color);
  const double darkest = Luminance(ground.darkest);
  const double lightest = Luminance(ground.lightest);
  if (own >= lightest) return (own + 0.05) / (lightest + 0.05);
  return own > darkest ? 1 : (darkest + 0.05) / (own + 0.05);
}

Color Readable(Color wanted, Ground ground, double contrast) {
  if (Contrast(wanted, ground) >= contrast) return wanted;
  const double own = Luminance(wanted);
  for (int percent = 1; percent <= 100; ++percent) {
    for (const Color pole : {kBlack, kWhite}) {
      const Color mixed = Mixed(wanted, pole, percent);
      if (Contrast(mixed, ground) < contrast) continue;
      const bool across = pole == kBlack ? own >= Luminance(ground.darkest) : own <= Luminance(ground.lightest);
      return across ? pole : mixed;
    }
  }
  return Contrast(kBlack, ground) > Contrast(kWhite, ground) ? kBlack : kWhite;
}

}  // namespace morva
