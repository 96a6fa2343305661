#include "board/board.h"

namespace morva {

void Board::SetOldPiece(int Index) {
  OldPiece = 0;
  if (Val(squ(Index).Tag) != 0) OldPiece = Val(std::to_string(squ(Index).ForeColor / kWhite) + squ(Index).Tag);
}

void Board::AddToHist() {
  if (Val(squ(i2).Tag) == 0) return;
  AddHistoryLine(who + ": " + SquareName(i1) + " - " + SquareName(i2) + " (" + PieceColorName(i2) + ")",
                 Val("1" + TwoDigits(i1) + TwoDigits(i2) + WhoDigit(i2) + squ(i2).Tag));
}

void Board::ChangeToHist(int Index) {
  AddHistoryLine(who + ": " + SquareName(Index) + " (" + OldPieceColorName() + " to " + PieceColorName(Index) + ")",
                 Val("2" + TwoDigits(OldPiece) + TwoDigits(Index) + WhoDigit(Index) + squ(Index).Tag));
}

void Board::TrashToHist(int Index) {
  AddHistoryLine(who + ": trashed " + SquareName(Index) + " (" + OldPieceColorName() + ")",
                 Val("300" + TwoDigits(Index) + WhoDigit(Index) + std::to_string(OldPiece % 10)));
}

// Who acted, and in which colour the piece on the square stands.
std::string Board::WhoDigit(int Index) const {
  const int white = squ(Index).ForeColor == kWhite ? 1 : 0;
  return std::to_string(who == Nick ? white : who == OpNick ? 2 + white : 0);
}

}  // namespace morva
