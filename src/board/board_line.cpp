#include "board/board.h"

namespace morva {

std::string Board::BoardLine() const {
  std::string line;
  for (int i = 0; i < kSquares; ++i) {
    int code = Val(squ(i).Tag);
    // After a bad letter the Tag holds a number outside the codes, which could come out as a control character.
    if (code < 0 || code > 9) code = 0;
    line += static_cast<char>((squ(i).ForeColor == kBlack ? 100 : 110) + code);
  }
  return line;
}

void Board::ReadLetter(int i, unsigned char letter) {
  const int n = letter - 100;
  PutPiece(i, n > 9 ? n - 10 : n, n > 9 ? kWhite : kBlack);
}

}  // namespace morva
