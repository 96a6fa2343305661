#include "table/frm_change.h"

#include <algorithm>

#include "net/wire.h"
#include "table/frm_chess.h"

namespace morva {

namespace {

// The piece to offer for an empty square: of the game that the first piece on the board belongs to.
int PieceOfTheGame() {
  for (const PictureBox& square : frmChess->squ) {
    const int piece = Val(square.Tag);
    if (piece > 0) return piece < kChecker ? kPawn : kChecker;
  }
  return kNothing;
}

}  // namespace

FrmChange::FrmChange()
    : Form({.scale_width = 3465,
            .scale_height = 1950,
            .close_box = false,
            .title_bar = false,
            .start = FormStyle::Start::kByCode}) {
  Place({
      {cmdTrash, 2520, 1320, 855, 495, "Trash Piece"},
      {cmdCancel, 2520, 720, 855, 495, "Cancel"},
      {cmdOk, 2520, 120, 855, 495, "OK"},
      {Frame3, 1320, 960, 1095, 855, "Team/Color"},
      {clr(1), 120, 480, 735, 255, "White", &Frame3},
      {clr(0), 120, 240, 735, 255, "Black", &Frame3},
      {rdo(kKingChecker), 1440, 480, 735, 255, "King"},
      {rdo(kChecker), 1440, 240, 855, 255, "Normal"},
      {rdo(kQueen), 240, 1440, 855, 255, "Queen"},
      {rdo(kKing), 240, 1200, 615, 255, "King"},
      {rdo(kKnight), 240, 960, 855, 255, "Knight"},
      {rdo(kBishop), 240, 720, 855, 255, "Bishop"},
      {rdo(kCastle), 240, 480, 735, 255, "Castle"},
      {rdo(kPawn), 240, 240, 735, 255, "Pawn"},
      {Frame2, 1320, 0, 1095, 855, "Checkers"},
      {Frame1, 120, 0, 1095, 1815, "Chess"},
  });
  // OK first: Enter presses the button that has the focus.
  std::vector<Control*> order{&cmdOk, &cmdCancel, &cmdTrash};
  for (OptionButton& piece : rdo) order.push_back(&piece);
  for (OptionButton& color : clr) order.push_back(&color);
  TabOrder(order);
  for (OptionButton& piece : rdo) {
    piece.JoinGroup(piece.Index < kChecker ? Frame1 : Frame2);
    piece.Click = [this] { cmdOk.SpokenMayChange(); };
  }
  for (OptionButton& color : clr) color.Click = [this] { cmdOk.SpokenMayChange(); };
  cmdOk.Spoken = [this] { return "OK, to " + ColorWord(ChosenColor()) + PieceWord(ChosenPiece()); };
  DefaultButton(cmdOk);
  CancelButton(cmdCancel);
  ARFormExtender1.ontop = true;

  cmdOk.Click = [this] { cmdOK_Click(); };
  cmdCancel.Click = [this] { cmdCancel_Click(); };
  cmdTrash.Click = [this] { cmdTrash_Click(); };
}

void FrmChange::Form_Load() {
  BelongTo(*frmChess);
  frmChess->Enabled = false;
  Index = Val(frmChess->Tag);
  OldPiece = frmChess->OldPiece;
  SpokenName = "Change " + frmChess->SquareWords(Index);
  const int piece = Val(frmChess->squ(Index).Tag);
  cmdTrash.Enabled = piece != 0;
  SelectPiece(piece > 0 ? piece : PieceOfTheGame());
  if (piece == kPawn) SelectPiece(kQueen);
  if (piece == kChecker) SelectPiece(kKingChecker);
  clr(frmChess->squ(Index).ForeColor == kWhite ? 1 : 0).Value = true;
}

// A code that names no piece has no button.
void FrmChange::SelectPiece(int piece) {
  if (piece >= rdo.LBound() && piece <= rdo.UBound()) rdo(piece).Value = true;
}

int FrmChange::ChosenPiece() {
  const auto* const chosen = std::find_if(rdo.begin(), rdo.end(), [](const OptionButton& o) { return o.Value(); });
  return chosen == rdo.end() ? kNothing : chosen->Index;
}

Color FrmChange::ChosenColor() const { return clr(0).Value() ? kBlack : kWhite; }

void FrmChange::cmdOK_Click() {
  const int piece = ChosenPiece();
  const Color color = ChosenColor();
  frmChess->Enabled = true;
  frmChess->PutPiece(Index, piece, color);
  frmChess->SetFocus();
  Transmit(TwoDigits(Index) + std::to_string(piece) + std::to_string(color), kChange);
  frmChess->who = frmChess->Nick;
  frmChess->OldPiece = OldPiece;
  frmChess->ChangeToHist(Index);
  Unload(frmChange);
}

void FrmChange::cmdTrash_Click() {
  frmChess->who = frmChess->Nick;
  frmChess->OldPiece = OldPiece;
  frmChess->TrashToHist(Index);
  frmChess->Enabled = true;
  frmChess->EmptySquare(Index);
  Transmit(Index, kTrash);
  frmChess->SetFocus();
  Unload(frmChange);
}

void FrmChange::cmdCancel_Click() {
  frmChess->Enabled = true;
  frmChess->SetFocus();
  Unload(frmChange);
}

}  // namespace morva
