#pragma once

namespace morva {

/// The squares of a board, numbered row by row from 0 at the top left.
inline constexpr int kSquares = 64;

/// What stands on a square, in either colour. The numbers are the codes in Tags, messages and histories.
enum Piece { kNothing, kPawn, kCastle, kBishop, kKnight, kKing, kQueen, kChecker, kKingChecker };

}  // namespace morva
