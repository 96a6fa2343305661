#include "painting/shadewell.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>
#include <vector>

namespace morva {
namespace {

/// A line, or a circle with its radius in x2.
struct Drawn {
  char kind;
  double x1, y1, x2, y2;
  Color color;
  int draw_width = 1;
  bool operator==(const Drawn&) const = default;
};

/// Writes down what is drawn on it.
struct Recorder {
  double width, height;
  int DrawWidth = 1;
  std::vector<Drawn> drawn = {};

  double Width() const { return width; }
  double Height() const { return height; }
  void Line(double x1, double y1, double x2, double y2, Color color) {
    drawn.push_back({'L', x1, y1, x2, y2, color, DrawWidth});
  }
  void Circle(double x, double y, double radius, Color color) {
    drawn.push_back({'C', x, y, radius, 0, color, DrawWidth});
  }
};

constexpr Color Rgb(Color red, Color green, Color blue) { return red + green * 256 + blue * 65536; }

TEST(Shadewell, SystemColorsFollowTheDesktop) {
  const QPalette before = QApplication::palette();
  QPalette desktop = before;
  desktop.setColor(QPalette::Button, QColor(200, 100, 50));
  desktop.setColor(QPalette::Light, QColor(1, 2, 3));
  QApplication::setPalette(desktop);
  EXPECT_EQ(SystemColorOf(0x8000000F), Rgb(200, 100, 50));
  EXPECT_EQ(SystemColorOf(0x80000014), Rgb(1, 2, 3));
  EXPECT_EQ(SystemColorOf(0x80000010), GetSysColor(16));
  EXPECT_NE(SystemColorOf(0x80000010), SystemColorOf(0x8000000F));
  QApplication::setPalette(before);
}

TEST(Shadewell, MixColorsRoundsEachChannelAndTakesNothingOutOfRange) {
  const Color some = Rgb(12, 200, 77);
  const Color other = Rgb(250, 3, 78);
  EXPECT_EQ(MixColors(some, other, 0), some);
  EXPECT_EQ(MixColors(some, other, 100), other);
  EXPECT_EQ(MixColors(some, other, 25), Rgb(72, 151, 77));  // 71.5, 150.75, 77.25
  EXPECT_EQ(MixColors(0, 16777215, 50), Rgb(128, 128, 128));
  EXPECT_EQ(MixColors(Rgb(0, 1, 2), Rgb(1, 2, 3), 50), Rgb(0, 2, 2));

  EXPECT_EQ(MixColors(0, 0, 101), std::nullopt);
  EXPECT_EQ(MixColors(0, 0, -1), std::nullopt);
  for (const std::int64_t bad : {std::int64_t{-1}, std::int64_t{16777216}, std::int64_t{kButtonFace}}) {
    EXPECT_EQ(MixColors(bad, 0, 50), std::nullopt) << bad;
    EXPECT_EQ(MixColors(0, bad, 50), std::nullopt) << bad;
  }
}

TEST(Shadewell, TopToBottomEndsInTheSecondColorWhereThePixelsComeOutEven) {
  Recorder panel{15000, 1545};
  PaintGradient(panel, kWhite, Rgb(10, 20, 30), 2);
  ASSERT_EQ(panel.drawn.size(), 104U);
  EXPECT_EQ(panel.drawn[0], (Drawn{'L', 0, 0, 15000, 0, kWhite}));
  EXPECT_EQ(panel.drawn[1], (Drawn{'L', 0, 15, 15000, 15, Rgb(253, 253, 253)}));  // 252.62, 252.72, 252.82
  EXPECT_EQ(panel.drawn[103], (Drawn{'L', 0, 1545, 15000, 1545, Rgb(10, 20, 30)}));
}

TEST(Shadewell, LeftToRightFallsShortWhereTheWidthIsNoWholePixel) {
  Recorder panel{157.5, 300, 7};  // 10.5 pixels, and a pen of its own
  PaintGradient(panel, Rgb(0, 210, 7), Rgb(210, 0, 7), 1);
  ASSERT_EQ(panel.drawn.size(), 11U);
  EXPECT_EQ(panel.drawn[0], (Drawn{'L', 0, 0, 0, 300, Rgb(0, 210, 7), 7}));
  EXPECT_EQ(panel.drawn[5], (Drawn{'L', 75, 0, 75, 300, Rgb(100, 110, 7), 7}));
  EXPECT_EQ(panel.drawn[10], (Drawn{'L', 150, 0, 150, 300, Rgb(200, 10, 7), 7}));
  EXPECT_EQ(panel.DrawWidth, 7);
}

TEST(Shadewell, AnyOtherKindDrawsRingsFromTheCentre) {
  for (const int kind : {0, 3, -5}) {
    Recorder panel{900, 1200, 7};  // half the diagonal: 50 pixels
    PaintGradient(panel, kBlack, Rgb(100, 50, 25), kind);
    ASSERT_EQ(panel.drawn.size(), 50U);
    EXPECT_EQ(panel.drawn[0], (Drawn{'C', 450, 600, 15, 0, Rgb(2, 1, 0), 2}));  // 0.5 in blue
    EXPECT_EQ(panel.drawn[2], (Drawn{'C', 450, 600, 45, 0, Rgb(6, 3, 2), 2}));  // 1.5 in blue
    EXPECT_EQ(panel.drawn[49], (Drawn{'C', 450, 600, 750, 0, Rgb(100, 50, 25), 2}));
    EXPECT_EQ(panel.DrawWidth, 1);
  }
  Recorder two_and_a_half{45, 60}, seven_and_a_half{135, 180};
  PaintGradient(two_and_a_half, kBlack, kWhite, 3);
  PaintGradient(seven_and_a_half, kBlack, kWhite, 3);
  EXPECT_EQ(two_and_a_half.drawn.size(), 2U);
  EXPECT_EQ(seven_and_a_half.drawn.size(), 8U);
}

TEST(Shadewell, WithoutASizeNothingIsDrawn) {
  for (const int kind : {1, 2, 3}) {
    Recorder nothing{0, 0};
    PaintGradient(nothing, kBlack, kWhite, kind);
    EXPECT_TRUE(nothing.drawn.empty());
  }
}

}  // namespace
}  // namespace morva
