#include "table/frm_show_move.h"

#include "platform/accessibility/announce.h"
#include "table/frm_chess.h"

namespace morva {

namespace {

constexpr int kSteps = 40;
constexpr double kHalfSquare = 422;

}  // namespace

FrmShowMove::FrmShowMove()
    : Form({.frame = FormStyle::Frame::kNone,
            .scale_width = 330,
            .scale_height = 330,
            .close_box = false,
            .start = FormStyle::Start::kByCode,
            .round = true,
            .within_owner = true,
            .left = -10005,
            .top = 10005}) {
  BackColor = kBlack;
  hundredth.Tick = [this] { hundredth_Timer(); };
}

void FrmShowMove::Form_Load() { BelongTo(*frmChess); }

void FrmShowMove::hundredth_Timer() {
  ++Step;
  Left = (X2 - X1) * (Step / static_cast<double>(kSteps)) + X1;
  Top = (Y2 - Y1) * (Step / static_cast<double>(kSteps)) + Y1;
  if (Step < kSteps) return;
  frmChess->Enabled = true;
  frmChess->SetFocus();
  Step = 0;
  Hide();
  Unload(frmShowMove);
}

// The disc's middle stands on the middle of a square, whatever frame the window manager draws.
void FrmChess::Slide() {
  Announce(i1 == i2 ? "No move yet" : SquareName(i1) + " - " + SquareName(i2) + ", " + SquareWords(i2));
  frmShowMove->BackColor = squ(i2).ForeColor;
  const double left = Left() + ClientLeft() + kHalfSquare - frmShowMove->ScaleWidth() / 2;
  const double top = Top() + ClientTop() + kHalfSquare - frmShowMove->ScaleHeight() / 2;
  frmShowMove->X1 = RoundToEven(squ(i1).Left() + left);
  frmShowMove->X2 = RoundToEven(squ(i2).Left() + left);
  frmShowMove->Y1 = RoundToEven(squ(i1).Top() + top);
  frmShowMove->Y2 = RoundToEven(squ(i2).Top() + top);
  Enabled = false;
  frmShowMove->Show();
}

}  // namespace morva
