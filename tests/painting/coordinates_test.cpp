#include "painting/coordinates.h"

#include <gtest/gtest.h>

namespace morva {
namespace {

struct Labels : Form, Coordinates {
  Labels() : Form(FormStyle{}) {
    Place(Layout());
    Collapse();
  }
  ~Labels() override { Unload(frmCoords); }

  /// After so many ticks all labels are that part of the way out.
  void ExpectAfter(int ticks, double part, bool sliding) {
    for (; ticks > 0 && frmCoords.Loaded(); --ticks) frmCoords->Timer1.Tick();
    for (int k = 0; k < 8; ++k) {
      const double way = 45 + part * (255 + 840 * k);
      EXPECT_DOUBLE_EQ(Coord(k).Left(), way) << k;
      EXPECT_DOUBLE_EQ(Coord(k + 8).Top(), way) << k;
      EXPECT_TRUE(Coord(k).Top() == 45 && Coord(k + 8).Left() == 45) << k;
    }
    EXPECT_EQ(frmCoords.Loaded(), sliding);
  }
};

TEST(Coordinates, SlideOutAndInInFortyStepsAndTurnWhereTheyAre) {
  Labels labels;
  labels.ExpectAfter(0, 0, false);
  EXPECT_TRUE(labels.Coord(7).Tag == "6135" && labels.Coord(7).Caption == "H" && labels.Coord(15).Caption == "8");

  labels.Toggle();
  EXPECT_EQ(labels.cmdShowCoord.ToolTipText(), "Hide co-ordinates");
  labels.ExpectAfter(20, 0.5, true);
  labels.ExpectAfter(19, 39 / 40.0, true);
  labels.ExpectAfter(1, 1, false);

  labels.Toggle();
  EXPECT_EQ(labels.cmdShowCoord.ToolTipText(), "Show co-ordinates");
  labels.ExpectAfter(30, 0.25, true);
  labels.Toggle();
  labels.ExpectAfter(1, 11 / 40.0, true);
  labels.Toggle();
  labels.ExpectAfter(10, 1 / 40.0, true);
  labels.ExpectAfter(1, 0, false);

  labels.Toggle();
  labels.Toggle();  // before the first step
  labels.ExpectAfter(1, 0, false);
}

}  // namespace
}  // namespace morva
