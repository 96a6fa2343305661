#include "board/board.h"

namespace morva {

void Board::PaintChess() {
  for (int i = 8; i <= 15; ++i) Pawn(i, 0);
  for (int i = 48; i <= 55; ++i) Pawn(i, 1);
  castle(0, 0);
  castle(7, 0);
  castle(63, 1);
  castle(56, 1);
  knight(1, 0);
  knight(6, 0);
  knight(57, 1);
  knight(62, 1);
  bishop(2, 0);
  bishop(5, 0);
  bishop(58, 1);
  bishop(61, 1);
  king(4, 0);
  king(60, 1);
  queen(3, 0);
  queen(59, 1);
}

void Board::SetUpChess() {
  ResetSquares();
  PaintChess();
}

void Board::SetUpCheckers() {
  ResetSquares();
  for (const int i : {1, 8, 17}) check4(i, 0);
  for (const int i : {40, 49, 56}) check4(i, 1);
}

void Board::check4(int i, int flag) {
  checker(i, flag);
  checker(i + 2, flag);
  checker(i + 4, flag);
  checker(i + 6, flag);
}

void Board::ClearBoard() {
  ResetSquares();
  for (PictureBox& square : squ) square.ForeColor = kBlack;
}

void Board::ResetSquares() {
  for (int i = 0; i < kSquares; ++i) EmptySquare(i);
}

}  // namespace morva
