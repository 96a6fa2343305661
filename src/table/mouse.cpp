#include "net/frm_control.h"
#include "net/sounds.h"
#include "net/wire.h"
#include "table/frm_change.h"
#include "table/frm_chess.h"
#include "table/frm_tool_window.h"

namespace morva {

void FrmChess::squ_DragOver(int Index, const Control& Source, DragState State) {
  if (Val(Source.Tag) == 0) return ClearMarks();  // the other side has moved or removed the dragged piece meanwhile
  const Color carried = squ(Source.Index).ForeColor;
  for (PictureBox& square : squ) {
    if (Val(square.Tag) != 0) continue;
    if (square.Index == Index) {
      hover(Index, carried);
    } else {
      square.Cls();
    }
  }
  if (State == DragState::kLeave) ClearMarks();
}

void FrmChess::Form_DragOver(Control& /*Source*/, float /*X*/, float /*Y*/, DragState /*State*/) { ClearMarks(); }

void FrmChess::ClearMarks() {
  for (PictureBox& square : squ) {
    if (Val(square.Tag) == 0) square.Cls();
  }
}

void FrmChess::squ_DragDrop(int Index, const Control& Source) {
  if (Val(squ(Index).Tag) != 0) return;
  who = Nick;
  DoMove(Source.Index, Index);
  Transmit(TwoDigits(Source.Index) + TwoDigits(Index), kBoard);
  txtIn.SetFocus();
  PlayResourceSound(kMoveSound);
  frmToolWindow->highlight("you");
}

void FrmChess::squ_MouseDown(int Index, int Button, float X, float Y) {
  if (Button == kMiddleButton) PassTurn();
  if (Button == kRightButton) OpenChangeDialog(Index, X, Y);
}

void FrmChess::Form_MouseDown(int Button, int /*Shift*/, float /*X*/, float /*Y*/) {
  if (Button == kMiddleButton) PassTurn();
}

void FrmChess::PassTurn() {
  const std::string turn = frmToolWindow->lblNick.FontBold() ? "you" : "me";
  frmToolWindow->highlight(turn);
  frmControl->tcp.SendData(turn);
}

void FrmChess::OpenChangeDialog(int Index, float X, float Y) {
  Tag = std::to_string(Index);
  SetOldPiece(Index);
  frmChange->Show();
  frmChange->Left = squ(Index).Left() + Left() + X;
  frmChange->Top = squ(Index).Top() + Top() + Y;
  const double lowest = Top() + Height() - frmChange->Height();
  if (frmChange->Top() > lowest) frmChange->Top = lowest;
  const double rightmost = Left() + Width() - frmChange->Width();
  if (frmChange->Left() > rightmost) frmChange->Left = rightmost;
}

void FrmChess::NameInTitle(int Index) { Caption = "Morva - " + Nick + " (" + SquareName(Index) + ")"; }

}  // namespace morva
