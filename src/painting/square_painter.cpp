#include "painting/square_painter.h"

#include "platform/system/values.h"

namespace morva {

SquarePainter::SquarePainter(const FormStyle& style) : Form(style) {
  for (int i = 0; i < kSquares; ++i) {
    const bool light = (i / 8 + i % 8) % 2 == 0;
    squ(i).BackColor = light ? kLightSquare : kDarkSquare;
    squ(i).ForeColor = light ? kBlack : kWhite;
    squ(i).FillSolid = true;
    squ(i).Tag = "0";
    squ(i).AutomaticDrag = true;
    squ(i).Kind = SpokenKind::kItem;
  }
}

void SquarePainter::PlaceSquares() {
  for (int i = 0; i < kSquares; ++i) {
    const int row = i / 8;
    Place({{squ(i), 840.0 * (i % 8), 840.0 * row, 845, 845}});
  }
}

void SquarePainter::drawmove(int i, Color c) {
  const int flag = c > kWhite / 2 ? 1 : 0;
  switch (Val(squ(i).Tag)) {
    case kNothing:
      return squ(i).Cls();
    case kPawn:
      return Pawn(i, flag);
    case kCastle:
      return castle(i, flag);
    case kBishop:
      return bishop(i, flag);
    case kKnight:
      return knight(i, flag);
    case kKing:
      return king(i, flag);
    case kQueen:
      return queen(i, flag);
    case kChecker:
      return checker(i, flag);
    case kKingChecker:
      return checkerking(i, flag);
  }
}

void SquarePainter::hover(int i, Color c) {
  PictureBox& square = squ(i);
  square.DrawWidth = 40;
  square.ForeColor = c;
  square.Line(390, 0, 390, 840);
  square.DrawWidth = 14;
  square.ForeColor = square.BackColor;
  square.Line(0, 0, 780, 780);
  square.Line(0, 780, 780, 0);
  square.Line(0, 0, 0, 780);
  square.Line(0, 0, 780, 0);
  square.Line(0, 780, 780, 780);
  square.Line(780, 0, 780, 780);
  square.ForeColor = c;
  square.DrawWidth = 4;
  square.Circle(390, 390, 30);
  square.DrawWidth = 1;
  square.ForeColor = kBlack;
}

}  // namespace morva
