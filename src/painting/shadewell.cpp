#include "painting/shadewell.h"

#include "platform/drawing/desktop_colors.h"

#include <cmath>

namespace morva {

namespace {

struct Channels {
  int blue, green, red;
};

Channels Split(Color color) {
  const auto value = static_cast<int>(color);
  const int blue = value / 65536;
  const int green = (value - blue * 65536) / 256;
  return {blue, green, value - green * 256 - blue * 65536};
}

// The channels stay fractions up to here, so that each is rounded once.
Color Between(Color color1, Color color2, double part) {
  const Channels from = Split(color1);
  const Channels to = Split(color2);
  const int blue = RoundToEven(from.blue - part * (from.blue - to.blue));
  const int green = RoundToEven(from.green - part * (from.green - to.green));
  const int red = RoundToEven(from.red - part * (from.red - to.red));
  return static_cast<Color>(red + green * 256 + blue * 65536);
}

bool IsColorValue(std::int64_t color) { return color >= 0 && color <= kWhite; }

}  // namespace

Color SystemColorOf(std::uint32_t Constant) { return GetSysColor(static_cast<int>(Constant & 0xFFU)); }

std::optional<Color> MixColors(std::int64_t Color1, std::int64_t Color2, int Percent) {
  if (Percent > 100 || Percent < 0 || !IsColorValue(Color1) || !IsColorValue(Color2)) return std::nullopt;
  return Between(static_cast<Color>(Color1), static_cast<Color>(Color2), Percent / 100.0);
}

Color GradientSteps::operator()(int i) const { return Between(from_, to_, i / n_); }

int RingCount(double Width, double Height) { return RoundToEven(std::hypot(Width / 30, Height / 30)); }

}  // namespace morva
