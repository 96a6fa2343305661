#include "platform/drawing/contrast.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace morva {

namespace {

double Luminance(Color color) {
  static const std::array<double, 256> kLinear = [] {
    std::array<double, 256> linear{};
    for (std::size_t v = 0; v < linear.size(); ++v) {
      const double part = static_cast<double>(v) / 255;
      linear[v] = part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    }
    return linear;
  }();
  const auto linear = [color](int shift) { return kLinear[color >> shift & 0xFFU]; };
  return 0.2126 * linear(0) + 0.7152 * linear(8) + 0.0722 * linear(16);
}

}  // namespace

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

Color Mixed(Color from, Color to, int percent) {
  Color mixed = 0;
  for (const int shift : {0, 8, 16}) {
    const auto channel = [shift](Color color) { return static_cast<int>(color >> shift & 0xFFU); };
    mixed |= static_cast<Color>(channel(from) + (channel(to) - channel(from)) * percent / 100) << shift;
  }
  return mixed;
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
