#include <string>

#include "painting/square_painter.h"

namespace morva {

// Every routine leaves DrawWidth at 1; those that don't set it first rely on that.

PictureBox& SquarePainter::Open(int i, Piece piece, int flag) {
  PictureBox& square = squ(i);
  square.Cls();
  square.Tag = std::to_string(piece);
  square.FillColor = square.ForeColor = flag == 0 ? kBlack : kWhite;
  return square;
}

void SquarePainter::TaperedBody(int i, int d) {
  for (int k = 1; k <= 300; ++k) squ(i).Line(k + 250 + d, 700, (k + 250) / 3.0 + 266 + d, 280);
}

void SquarePainter::Pawn(int i, int flag) {
  PictureBox& square = Open(i, kPawn, flag);
  square.DrawWidth = 1;
  square.Circle(390, 220, 80);
  square.DrawWidth = 3;
  square.Line(180, 630, 585, 630);
  square.DrawWidth = 1;
  for (int k = 0; k <= 15; ++k) square.Line(390 - 5 * (k - 7), 300, 390 - 15 * (k - 7), 630, square.FillColor);
  square.Line(425, 300, 495, 630);
  square.Line(350, 300, 270, 630);
}

void SquarePainter::castle(int i, int flag) {
  PictureBox& square = Open(i, kCastle, flag);
  square.DrawWidth = 15;
  square.Line(390, 280, 390, 540);
  square.DrawWidth = 1;
  for (int y = 550; y <= 700; ++y) square.Line(200, y, 580, y);
  square.DrawWidth = 4;
  square.Line(275, 150, 275, 280);
  square.Line(375, 150, 375, 280);
  square.Line(390, 150, 390, 280);
  square.Line(490, 150, 490, 280);
  square.DrawWidth = 1;
}

void SquarePainter::bishop(int i, int flag) {
  PictureBox& square = Open(i, kBishop, flag);
  TaperedBody(i, 0);
  square.Circle(405, 250, 115);
  square.ForeColor = square.BackColor;
  square.Line(405, 0, 405, 250);
  square.ForeColor = square.FillColor;
}

void SquarePainter::knight(int i, int flag) {
  PictureBox& square = Open(i, kKnight, flag);
  TaperedBody(i, 50);
  square.Circle(465, 250, 115);
  square.DrawWidth = 7;
  square.Line(465, 250, 225, 345);
  square.Line(440, 200, 225, 345);
  square.Line(465, 265, 225, 345);
  square.DrawWidth = 1;
  square.ForeColor = square.BackColor;
  square.Line(260, 330, 150, 375);
  square.ForeColor = square.FillColor;
}

void SquarePainter::king(int i, int flag) {
  PictureBox& square = Open(i, kKing, flag);
  square.DrawWidth = 1;
  TaperedBody(i, 0);
  square.Circle(405, 250, 80);
  square.DrawWidth = 5;
  square.Line(305, 245, 505, 245);
  square.Line(405, 150, 405, 280);
  square.DrawWidth = 1;
}

void SquarePainter::queen(int i, int flag) {
  PictureBox& square = Open(i, kQueen, flag);
  TaperedBody(i, 0);
  square.Circle(405, 250, 80);
  square.DrawWidth = 3;
  square.Line(405, 150, 405, 280);
  square.Line(505, 150, 405, 280);
  square.Line(305, 150, 405, 280);
  square.DrawWidth = 1;
}

void SquarePainter::checker(int i, int flag) {
  PictureBox& square = Open(i, kChecker, flag);
  square.Circle(390, 390, 330);
}

void SquarePainter::checkerking(int i, int flag) {
  PictureBox& square = Open(i, kKingChecker, flag);
  square.DrawWidth = 1;
  square.Circle(390, 390, 330);
  square.ForeColor = square.BackColor;
  square.DrawWidth = 3;
  square.Circle(390, 390, 230);
  square.ForeColor = square.FillColor;
  square.DrawWidth = 1;
}

}  // namespace morva
