#include "board/words.h"

#include <array>

#include "board/board.h"

namespace morva {

std::string SquareName(int i) { return static_cast<char>('A' + i % 8) + std::to_string(i / 8 + 1); }

std::string PieceWord(int code) {
  static constexpr std::array kWords{"",     "pawn",  "castle",  "bishop",      "knight",
                                     "king", "queen", "checker", "king checker"};
  return code >= kNothing && code <= kKingChecker ? kWords[static_cast<std::size_t>(code)] : "";
}

std::string ColorWord(Color color) { return color == kBlack ? "black " : "white "; }

std::string Board::PieceName(int Index) const { return PieceWord(Val(squ(Index).Tag)); }

std::string Board::PieceColorName(int Index) const { return ColorWord(squ(Index).ForeColor) + PieceName(Index); }

std::string Board::SquareWords(int Index) const {
  return SquareName(Index) + ", " + (PieceName(Index).empty() ? "empty" : PieceColorName(Index));
}

std::string Board::OldPieceColorName() const {
  if (OldPiece == 0) return "nothing";
  return ColorWord(OldPiece >= 9 ? kWhite : kBlack) + PieceWord(OldPiece % 10);
}

}  // namespace morva
