#pragma once

#include <cstdint>
#include <optional>

#include "platform/drawing/colors.h"
#include "platform/system/values.h"

namespace morva {

/// The desktop's colour that a system colour constant of the form 800000NN stands for, as it is now.
Color SystemColorOf(std::uint32_t Constant);

/// The colour Percent per cent of the way from Color1 to Color2, each channel rounded to the nearest whole number, an
/// exact half to the even one. Nothing where Percent is not within 0 to 100 or a colour not within 0 to 16777215.
std::optional<Color> MixColors(std::int64_t Color1, std::int64_t Color2, int Percent);

/// The steps of a gradient, each a line or a circle one pixel further on.
class GradientSteps {
 public:
  /// From Color1 at step 0 to Color2 at step n, which can lie between two whole numbers and is above 0.
  GradientSteps(Color Color1, Color Color2, double n) : from_(Color1), to_(Color2), n_(n) {}
  Color operator()(int i) const;

 private:
  Color from_, to_;
  double n_;
};

/// Half the diagonal of an area of this many twips, in whole pixels.
int RingCount(double Width, double Height);

/// Paints a gradient over what the target shows. Kind 1 runs from left to right, 2 from top to bottom, any other from
/// the centre to the corners. The target has Width(), Height(), Line(x1, y1, x2, y2, color), Circle(x, y, radius,
/// color), all in twips, and DrawWidth in pixels, which Kind 1 and 2 leave alone and any other leaves at 1. The colours
/// are colour values, not system colour constants. On a target without a size nothing is drawn.
template <class Target>
void PaintGradient(Target& target, Color Color1, Color Color2, int Kind) {
  constexpr double kPixel = kTwipsPerPixel;
  const double width = target.Width();
  const double height = target.Height();
  if (!(width > 0 && height > 0)) return;
  if (Kind == 1) {
    const double n = width / kPixel;
    const GradientSteps color(Color1, Color2, n);
    for (int i = 0; i <= n; ++i) target.Line(i * kPixel, 0, i * kPixel, height, color(i));
  } else if (Kind == 2) {
    const double n = height / kPixel;
    const GradientSteps color(Color1, Color2, n);
    for (int i = 0; i <= n; ++i) target.Line(0, i * kPixel, width, i * kPixel, color(i));
  } else {
    const int n = RingCount(width, height);
    const GradientSteps color(Color1, Color2, n);
    for (int i = 1; i <= n; ++i) {
      target.DrawWidth = 2;
      target.Circle(width / 2, height / 2, i * kPixel, color(i));
      target.DrawWidth = 1;
    }
  }
}

}  // namespace morva
