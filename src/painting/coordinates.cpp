#include "painting/coordinates.h"

#include <algorithm>
#include <string>

#include "platform/system/values.h"

namespace morva {

std::vector<LayoutRow> Coordinates::Layout() {
  cmdShowCoord.ToolTipText = "Show co-ordinates";
  cmdShowCoord.SpokenName = cmdShowCoord.ToolTipText;
  for (CommandButton& label : Coord) {
    label.TabStop = false;
    label.Kind = SpokenKind::kNothing;
  }
  std::vector<LayoutRow> rows{{cmdShowCoord, 45, 45, 240, 240, "C"}};
  for (int k = 0; k < 8; ++k)
    rows.push_back({Coord(k + 8), 45, 300.0 + 840 * k, 240, 240, std::string(1, "12345678"[k])});
  for (int k = 0; k < 8; ++k) rows.push_back({Coord(k), 300.0 + 840 * k, 45, 240, 240, std::string(1, "ABCDEFGH"[k])});
  return rows;
}

void Coordinates::Collapse() {
  for (int i = 0; i < 8; ++i) {
    Coord(i).Tag = std::to_string(RoundToEven(Coord(i).Left - 45));
    Coord(i + 8).Tag = std::to_string(RoundToEven(Coord(i + 8).Top - 45));
    Coord(i).Left = 45;
    Coord(i + 8).Top = 45;
  }
}

void Coordinates::Toggle() {
  CoordsShown = !CoordsShown;
  frmCoords.made = [this](FrmCoords& slide) { slide.labels = this; };
  frmCoords->Show();
  cmdShowCoord.ToolTipText = std::string(CoordsShown ? "Hide" : "Show") + " co-ordinates";
  cmdShowCoord.SpokenName = cmdShowCoord.ToolTipText;
}

void Coordinates::Slide(int step) {
  for (int i = 0; i < 8; ++i) {
    Coord(i).Left = Val(Coord(i).Tag) * step / 40.0 + 45;
    Coord(i + 8).Top = Val(Coord(i + 8).Tag) * step / 40.0 + 45;
  }
}

FrmCoords::FrmCoords()
    : Form({.caption = "",
            .scale_width = 1350,
            .scale_height = 1170,
            .close_box = false,
            .title_bar = false,
            .start = FormStyle::Start::kByCode,
            .left = -9960,
            .top = 10050}) {
  Enabled = false;
  Timer1.Tick = [this] { Timer1_Timer(); };
}

void FrmCoords::Form_Load() { CoordStep = labels->CoordsShown ? 0 : 40; }

// Unload deletes the object only after the handler has returned; the timer must not tick until then.
void FrmCoords::Form_Unload() { Timer1.Enabled = false; }

void FrmCoords::Timer1_Timer() {
  // A second press can come before the first tick; the labels then stay where they are.
  CoordStep = std::clamp(CoordStep + (labels->CoordsShown ? 1 : -1), 0, 40);
  labels->Slide(CoordStep);
  if (CoordStep == 0 || CoordStep == 40) Unload(frmCoords);
}

}  // namespace morva
