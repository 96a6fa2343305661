#include "painting/shadewell.h"

#include <gtest/gtest.h>

#include "platform/drawing/surface.h"

namespace morva {
namespace {

struct Sheet : Surface {
  double width, height;
  double Width() const { return width; }
  double Height() const { return height; }
};

constexpr Color Rgb(Color red, Color green, Color blue) { return red + green * 256 + blue * 65536; }

Stroke Line(float x1, float y1, float x2, float y2, Color color, int pen = 1) {
  return {Stroke::Kind::kLine, x1, y1, x2, y2, pen, color, kBlack, 0};
}

Stroke Circle(float x, float y, float radius, Color color) {
  return {Stroke::Kind::kCircle, x, y, radius, 0, 2, color, kBlack, 0};
}

TEST(Shadewell, MixColorsRoundsEachChannelAndTakesNothingOutOfRange) {
  const Color some = Rgb(12, 200, 77);
  const Color other = Rgb(250, 3, 78);
  EXPECT_EQ(MixColors(some, other, 0), some);
  EXPECT_EQ(MixColors(some, other, 100), other);
  EXPECT_EQ(MixColors(some, other, 25), Rgb(72, 151, 77));  // 71.5, 150.75, 77.25
  EXPECT_EQ(MixColors(0, kWhite, 50), Rgb(128, 128, 128));
  EXPECT_EQ(MixColors(Rgb(0, 1, 2), Rgb(1, 2, 3), 50), Rgb(0, 2, 2));
  for (const int bad : {-1, 101}) EXPECT_EQ(MixColors(0, 0, bad), std::nullopt) << bad;
  for (const std::int64_t bad : {std::int64_t{-1}, std::int64_t{16777216}, std::int64_t{kButtonFace}}) {
    EXPECT_TRUE(!MixColors(bad, 0, 50) && !MixColors(0, bad, 50)) << bad;
  }
}

TEST(Shadewell, GradientsRunFromTheFirstColorToTheSecond) {
  Sheet down{{}, 15000, 1545};
  PaintGradient(down, kWhite, Rgb(10, 20, 30), 2);
  ASSERT_EQ(down.Strokes().size(), 104U);
  EXPECT_EQ(down.Strokes()[0], Line(0, 0, 15000, 0, kWhite));
  EXPECT_EQ(down.Strokes()[1], Line(0, 15, 15000, 15, Rgb(253, 253, 253)));  // 252.62, 252.72, 252.82
  EXPECT_EQ(down.Strokes()[103], Line(0, 1545, 15000, 1545, Rgb(10, 20, 30)));

  Sheet right{{}, 157.5, 300};  // 10.5 pixels: the last line falls short of the second colour
  right.DrawWidth = 7;
  PaintGradient(right, Rgb(0, 210, 7), Rgb(210, 0, 7), 1);
  ASSERT_EQ(right.Strokes().size(), 11U);
  EXPECT_EQ(right.Strokes()[0], Line(0, 0, 0, 300, Rgb(0, 210, 7), 7));
  EXPECT_EQ(right.Strokes()[5], Line(75, 0, 75, 300, Rgb(100, 110, 7), 7));
  EXPECT_EQ(right.Strokes()[10], Line(150, 0, 150, 300, Rgb(200, 10, 7), 7));

  for (const int kind : {0, 3, -5}) {
    Sheet rings{{}, 900, 1200};  // half the diagonal: 50 pixels
    rings.DrawWidth = 7;
    PaintGradient(rings, kBlack, Rgb(100, 50, 25), kind);
    ASSERT_EQ(rings.Strokes().size(), 50U);
    EXPECT_EQ(rings.Strokes()[0], Circle(450, 600, 15, Rgb(2, 1, 0)));  // 0.5 in blue
    EXPECT_EQ(rings.Strokes()[2], Circle(450, 600, 45, Rgb(6, 3, 2)));  // 1.5 in blue
    EXPECT_EQ(rings.Strokes()[49], Circle(450, 600, 750, Rgb(100, 50, 25)));
    EXPECT_EQ(rings.DrawWidth, 1);
  }
  EXPECT_TRUE(RingCount(45, 60) == 2 && RingCount(135, 180) == 8);  // 2.5, 7.5

  for (const int kind : {1, 2, 3}) {
    Sheet nothing{{}, 0, 0};
    PaintGradient(nothing, kBlack, kWhite, kind);
    EXPECT_TRUE(nothing.Strokes().empty());
  }
}

}  // namespace
}  // namespace morva
