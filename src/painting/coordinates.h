#pragma once

#include <vector>

#include "platform/controls/buttons.h"
#include "platform/controls/control_array.h"
#include "platform/system/event_loop.h"
#include "platform/window/form.h"
#include "platform/window/window.h"

namespace morva {

/// The names of columns and rows on 16 labels along the edges of the board, and the button that lets them slide out
/// and in.
class Coordinates {
 public:
  CommandButton cmdShowCoord;
  ControlArray<CommandButton, 16> Coord;  ///< 0 to 7 are the columns A to H, 8 to 15 the rows 1 to 8
  bool CoordsShown = false;               ///< whether the labels are shown or sliding out

  /// The button and the labels in their places, as rows of the window's layout.
  std::vector<LayoutRow> Layout();

  /// Stacks the labels, which stand in their places, under cmdShowCoord, and stores the distance of each, twips, in its
  /// Tag.
  void Collapse();
  /// Starts to slide the labels out, or back in, from their current positions.
  void Toggle();
  /// Positions the labels for a step of the slide: 0 is collapsed, 40 is shown.
  void Slide(int step);
};

/// One slide of the labels: an invisible window that lives as long as the slide and does one step a tick.
class FrmCoords : public Form {
 public:
  FrmCoords();

  Coordinates* labels = nullptr;  ///< set by Toggle before the load; must live as long as this window
  Timer Timer1{1};
  int CoordStep = 0;  ///< 0 all collapsed, 40 all shown

  void Form_Load() override;
  void Form_Unload() override;

 private:
  void Timer1_Timer();
};

inline Window<FrmCoords> frmCoords;

}  // namespace morva
