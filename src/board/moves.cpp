#include "board/board.h"

namespace morva {

void Board::DoMove(int from, int too) {
  i1 = from;
  i2 = too;
  const int piece = Val(squ(from).Tag);
  const Color c = squ(from).ForeColor;
  PutPiece(too, piece, c);
  EmptySquare(from);  // last: a received move onto its own square leaves nothing
  AddToHist();
  if (c == kWhite && too < 8 && Val(squ(too).Tag) == 1) PutPiece(too, 6, c);
  if (c == kBlack && too > 55 && Val(squ(too).Tag) == 1) PutPiece(too, 6, c);
  if (c == kWhite && too < 8 && Val(squ(too).Tag) == 7) PutPiece(too, 8, c);
  if (c == kBlack && too > 55 && Val(squ(too).Tag) == 7) PutPiece(too, 8, c);
}

void Board::PutPiece(int Index, int code, Color color) {
  squ(Index).Tag = std::to_string(code);
  drawmove(Index, color);
}

void Board::EmptySquare(int Index) {
  squ(Index).Cls();
  squ(Index).Tag = "0";
}

}  // namespace morva
