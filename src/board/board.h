#pragma once

#include <cstdint>
#include <string>

#include "board/words.h"
#include "painting/square_painter.h"
#include "platform/system/values.h"

namespace morva {

/// The main window as the board: the squares are the only record of the game, and this layer moves what stands on them.
/// It knows no rule. A square index is 0 to 63; another one throws std::out_of_range, so callers check received ones.
class Board : public SquarePainter {
 public:
  using SquarePainter::SquarePainter;

  int i1 = 0, i2 = 0;        ///< from and to of the last move
  std::string who;           ///< nick under which the next history line is written; the caller sets it
  int OldPiece = 0;          ///< what stood on a square before a change: 0 nothing, 1 to 8 black, 11 to 18 white
  std::string Nick, OpNick;  ///< this player and the other one

  /// Moves a piece to another square, in place of what stood there, adds the history line and turns a pawn into a queen
  /// or a checker into a king checker on its far row. A move of nothing empties the target and adds no line.
  void DoMove(int from, int too);

  /// Adds the history line of the move that DoMove has just made; none if nothing moved.
  void AddToHist();
  /// Adds the history line of a change, after it; OldPiece tells what stood on the square.
  void ChangeToHist(int Index);
  /// Adds the history line of a trash; OldPiece tells what stood on the square, which can be empty by now.
  void TrashToHist(int Index);
  /// Sets OldPiece to what stands on the square.
  void SetOldPiece(int Index);

  /// Puts a piece on the square, in place of what stood there, and paints it. Code 0 clears the square and leaves its
  /// colour; an invalid code is stored in the Tag, and the picture stays.
  virtual void PutPiece(int Index, int code, Color color);
  /// Removes the piece. The colour of the square stays.
  virtual void EmptySquare(int Index);

  /// "pawn", of what stands on the square; empty for nothing.
  std::string PieceName(int Index) const;
  /// "white pawn"; of an empty square the colour word alone.
  std::string PieceColorName(int Index) const;
  /// "A1, black castle" or "B3, empty": the square and what stands on it.
  std::string SquareWords(int Index) const;
  /// "black queen", of OldPiece; "nothing" for 0.
  std::string OldPieceColorName() const;

  /// Paints the chess start position and leaves the other squares as they are.
  void PaintChess();
  /// Empties the board and sets up the pieces. The colours left on empty squares stay.
  void SetUpChess();
  void SetUpCheckers();
  /// Places four checkers, on every second square from i on. flag is 0 for black, 1 for white.
  void check4(int i, int flag);
  /// Empties every square and makes its colour black.
  void ClearBoard();

  /// The whole board in 64 letters, one a square in index order, "d" to "w". A square with a code that has no letter
  /// is written as nothing.
  std::string BoardLine() const;
  /// Puts on square i what the letter stands for. An unknown byte leaves an invalid code in the Tag and the picture
  /// unchanged.
  void ReadLetter(int i, unsigned char letter);

  /// Adds a line to the history and stores data with it. The window above implements it.
  virtual void AddHistoryLine(const std::string& text, std::int32_t data) = 0;

 private:
  void ResetSquares();
  std::string WhoDigit(int Index) const;
};

}  // namespace morva
