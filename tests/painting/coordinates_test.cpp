#include "painting/coordinates.h"

#include <gtest/gtest.h>

namespace morva {
namespace {

class Labels : public CoordinatesForm {
 public:
  Labels() : CoordinatesForm(FormStyle{}) {
    PlaceCoords();
    CollapseCoords();
  }
  ~Labels() override { Unload(frmCoords); }

  void Ticks(int n) {
    for (; n > 0 && frmCoords.Loaded(); --n) frmCoords->Timer1.Tick();
  }
  /// All labels are this part of the way out.
  void ExpectAt(double part) {
    for (int k = 0; k < 8; ++k) {
      EXPECT_DOUBLE_EQ(Coord(k).Left(), 45 + part * (255 + 840 * k)) << k;
      EXPECT_DOUBLE_EQ(Coord(k).Top(), 45) << k;
      EXPECT_DOUBLE_EQ(Coord(k + 8).Left(), 45) << k;
      EXPECT_DOUBLE_EQ(Coord(k + 8).Top(), 45 + part * (255 + 840 * k)) << k;
    }
  }
};

TEST(Coordinates, SlideOutAndInInFortySteps) {
  Labels labels;
  labels.ExpectAt(0);
  EXPECT_EQ(labels.Coord(7).Tag, "6135");
  EXPECT_EQ(labels.Coord(7).Caption(), "H");
  EXPECT_EQ(labels.Coord(15).Caption(), "8");

  labels.ToggleCoords();
  EXPECT_EQ(labels.cmdShowCoord.ToolTipText(), "Hide co-ordinates");
  labels.Ticks(20);
  labels.ExpectAt(0.5);
  labels.Ticks(19);
  EXPECT_TRUE(frmCoords.Loaded());
  labels.Ticks(1);
  labels.ExpectAt(1);
  EXPECT_FALSE(frmCoords.Loaded());

  labels.ToggleCoords();
  EXPECT_EQ(labels.cmdShowCoord.ToolTipText(), "Show co-ordinates");
  labels.Ticks(39);
  labels.ExpectAt(1 / 40.0);
  labels.Ticks(1);
  labels.ExpectAt(0);
  EXPECT_FALSE(frmCoords.Loaded());
}

TEST(Coordinates, APressTurnsARunningSlideWhereItIs) {
  Labels labels;
  labels.ToggleCoords();
  labels.ToggleCoords();  // before the first step
  labels.Ticks(1);
  labels.ExpectAt(0);
  EXPECT_FALSE(frmCoords.Loaded());

  labels.ToggleCoords();
  labels.Ticks(10);
  labels.ToggleCoords();
  EXPECT_EQ(labels.cmdShowCoord.ToolTipText(), "Show co-ordinates");
  labels.Ticks(1);
  labels.ExpectAt(9 / 40.0);
  labels.ToggleCoords();
  labels.ToggleCoords();
  labels.Ticks(9);
  labels.ExpectAt(0);
  EXPECT_FALSE(frmCoords.Loaded());
}

}  // namespace
}  // namespace morva
