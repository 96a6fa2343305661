#include <gtest/gtest.h>

#include "painting/coordinates.h"
#include "painting/shadewell.h"
#include "painting/square_painter.h"

namespace morva {
namespace {

TEST(Shadewell, MixColorsRoundsEachChannelAndTakesNothingOutOfRange) {
  const std::tuple<std::int64_t, std::int64_t, int, std::optional<Color>> mixtures[] = {
      {0x4DC80C, 0x4E03FA, 25, 0x4D9748},  // 77.25, 150.75, 71.5
      {0x020100, 0x030201, 50, 0x020200},
      {kWhite, 0, -1, std::nullopt},
      {-1, 0, 50, std::nullopt},
      {0, kWhite + 1, 50, std::nullopt}};
  for (const auto& [one, two, percent, mixed] : mixtures) EXPECT_EQ(MixColors(one, two, percent), mixed) << percent;
}

TEST(Shadewell, RingsRunFromTheMiddleToTheCorners) {
  struct Sheet : Surface {
    double Width() const { return 900; }
    double Height() const { return 1200; }  // half the diagonal is 50 pixels
  } rings;
  PaintGradient(rings, kBlack, 0x193264, 3);
  ASSERT_EQ(rings.Strokes().size(), 50U);
  for (const auto& [i, color] : {std::pair{0U, 0x000102U}, {49U, 0x193264U}}) {  // 0.5 in blue
    const float radius = 15 * (i + 1.0F);
    EXPECT_EQ(rings.Strokes()[i], (Stroke{Stroke::Kind::kCircle, 450, 600, radius, 0, 2, color, kBlack, 0}));
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
    const double way = 45 + slide.step / 40.0 * (255 + 840 * 7);
    for (const double at : {labels.Coord(7).Left(), labels.Coord(15).Top()}) EXPECT_DOUBLE_EQ(at, way) << slide.step;
    EXPECT_EQ(frmCoords.Loaded(), slide.step % 40 != 0) << slide.step;
    EXPECT_EQ(labels.cmdShowCoord.ToolTipText(), std::string(slide.tip) + " co-ordinates");
    EXPECT_EQ(labels.cmdShowCoord.SpokenName(), labels.cmdShowCoord.ToolTipText());
  }
}

TEST(SquarePainter, AMarkThatIsDrawnAgainAndAgainDoesNotPileUp) {
  SquarePainter board((FormStyle()));
  for (int time = 0; time < 500; ++time) board.hover(20, kWhite);
  EXPECT_LT(board.squ(20).Strokes().size(), 20U);
  EXPECT_THROW(board.squ(64), std::out_of_range);
}

}  // namespace
}  // namespace morva
