#include <gtest/gtest.h>

#include "painting/coordinates.h"
#include "painting/shadewell.h"
#include "painting/square_painter.h"

namespace morva {
namespace {

constexpr Color Rgb(Color red, Color green, Color blue) { return red + green * 256 + blue * 65536; }

TEST(Shadewell, MixColorsRoundsEachChannelAndTakesNothingOutOfRange) {
  const Color some = Rgb(12, 200, 77), other = Rgb(250, 3, 78);
  const std::tuple<Color, Color, int, Color> mixtures[] = {{some, other, 0, some},
                                                           {some, other, 100, other},
                                                           {0, kWhite, 50, 0x808080},
                                                           {some, other, 25, Rgb(72, 151, 77)},  // 71.5, 150.75, 77.25
                                                           {0x020100, 0x030201, 50, 0x020200}};
  for (const auto& [one, two, percent, mixed] : mixtures) EXPECT_EQ(MixColors(one, two, percent), mixed) << percent;
  for (const int bad : {-1, 101}) EXPECT_EQ(MixColors(0, 0, bad), std::nullopt) << bad;
  for (const std::int64_t bad : {std::int64_t{-1}, std::int64_t{16777216}, std::int64_t{kButtonFace}}) {
    EXPECT_TRUE(!MixColors(bad, 0, 50) && !MixColors(0, bad, 50)) << bad;
  }
}

struct Sheet : Surface {
  double width, height;
  double Width() const { return width; }
  double Height() const { return height; }
};

TEST(Shadewell, RingsRunFromTheMiddleToTheCorners) {
  for (const int kind : {0, 3, -5}) {
    Sheet rings{{}, 900, 1200};  // half the diagonal: 50 pixels
    PaintGradient(rings, kBlack, Rgb(100, 50, 25), kind);
    ASSERT_EQ(rings.Strokes().size(), 50U);
    const auto circle = [](float radius, Color color) {
      return Stroke{Stroke::Kind::kCircle, 450, 600, radius, 0, 2, color, kBlack, 0};
    };
    EXPECT_EQ(rings.Strokes()[0], circle(15, Rgb(2, 1, 0)));  // 0.5 in blue
    EXPECT_EQ(rings.Strokes()[49], circle(750, Rgb(100, 50, 25)));
    EXPECT_EQ(rings.DrawWidth, 1);
  }
  EXPECT_TRUE(RingCount(45, 60) == 2 && RingCount(135, 180) == 8);  // 2.5, 7.5
  for (const int kind : {1, 2, 3}) {
    Sheet nothing{{}, 0, 0};
    PaintGradient(nothing, kBlack, kWhite, kind);
    EXPECT_TRUE(nothing.Strokes().empty());
  }
}

TEST(Coordinates, SlideInFortyStepsAndTurnWhereTheyAre) {
  struct Labels : Form, Coordinates {
    Labels() : Form(FormStyle{}) { Place(Layout()); }
  } labels;
  labels.Collapse();
  const struct {
    int toggles, ticks, step;
    const char* tip;
  } slides[] = {{0, 0, 0, "Show"},  {1, 20, 20, "Hide"}, {0, 19, 39, "Hide"}, {0, 1, 40, "Hide"}, {1, 30, 10, "Show"},
                {1, 1, 11, "Hide"}, {1, 10, 1, "Show"},  {0, 1, 0, "Show"},   {2, 1, 0, "Show"}};
  for (const auto& slide : slides) {
    for (int k = 0; k < slide.toggles; ++k) labels.Toggle();
    for (int k = 0; k < slide.ticks; ++k) frmCoords->Timer1.Tick();
    for (int k = 0; k < 8; ++k) {
      const double way = 45 + slide.step / 40.0 * (255 + 840 * k);
      EXPECT_DOUBLE_EQ(labels.Coord(k).Left(), way) << k;
      EXPECT_DOUBLE_EQ(labels.Coord(k + 8).Top(), way) << k;
    }
    EXPECT_EQ(frmCoords.Loaded(), slide.step % 40 != 0) << slide.step;
    EXPECT_EQ(labels.cmdShowCoord.ToolTipText(), std::string(slide.tip) + " co-ordinates");
  }
}

TEST(SquarePainter, FollowsTheTagAndLeavesNothingBehind) {
  SquarePainter board((FormStyle()));
  PictureBox& square = board.squ(20);
  EXPECT_THROW(board.squ(64), std::out_of_range);
  board.queen(20, 1);
  square.Tag = "0";
  board.drawmove(20, kBlack);
  EXPECT_TRUE(square.Strokes().empty() && square.ForeColor == kWhite);
  for (const auto& [asked, painted] : {std::pair{8388607U, kBlack}, {8388608U, kWhite}, {4294967295U, kWhite}}) {
    square.Tag = "7";
    board.drawmove(20, asked);
    EXPECT_TRUE(square.ForeColor == painted && square.FillColor == painted) << asked;
  }
  square.Tag = "0";
  for (int time = 0; time < 500; ++time) {
    board.hover(20, kWhite);
    square.DropRepeated();
  }
  EXPECT_TRUE(square.Tag == "0" && square.ForeColor == kBlack && square.DrawWidth == 1);
  EXPECT_LT(square.Strokes().size(), 20U);
}

}  // namespace
}  // namespace morva
