#include "board/board.h"

namespace morva {

void Board::DoMove(int from, int too) {
  i1 = from;
  i2 = too;
  squ(from).Cls();
  squ(too).Tag = squ(from).Tag;
  squ(from).Tag = "0";
  drawmove(too, squ(from).ForeColor);
  AddToHist();
  const Color c = squ(from).ForeColor;
  if (c == kWhite && too < 8 && Val(squ(too).Tag) == 1) Convert(too, 6);
  if (c == kBlack && too > 55 && Val(squ(too).Tag) == 1) Convert(too, 6);
  if (c == kWhite && too < 8 && Val(squ(too).Tag) == 7) Convert(too, 8);
  if (c == kBlack && too > 55 && Val(squ(too).Tag) == 7) Convert(too, 8);
}

void Board::Convert(int too, int code) {
  squ(too).Tag = std::to_string(code);
  drawmove(too, squ(too).ForeColor);
}

}  // namespace morva
