#include "board/board.h"
#include "platform/accessibility/announce.h"

namespace morva {

void Board::DoMove(int from, int too) {
  i1 = from;
  i2 = too;
  const int piece = Val(squ(from).Tag);
  const Color c = squ(from).ForeColor;
  PutPiece(too, piece, c);
  EmptySquare(from);  // last: a received move onto its own square leaves nothing
  AddToHist();
  const bool on_far_row = c == kWhite ? too < 8 : too >= kSquares - 8;
  const int arrived = Val(squ(too).Tag);
  if (!on_far_row || (arrived != kPawn && arrived != kChecker)) return;
  PutPiece(too, arrived == kPawn ? kQueen : kKingChecker, c);
  Announce(SquareWords(too));
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
