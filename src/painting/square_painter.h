#pragma once

#include "painting/squares.h"
#include "platform/controls/control_array.h"
#include "platform/controls/pictures.h"
#include "platform/drawing/colors.h"
#include "platform/window/form.h"

namespace morva {

/// The colours of squares whose row plus column is even, and of the others. Pieces of both colours stand out on both.
inline constexpr Color kLightSquare = 0x7290A3;
inline constexpr Color kDarkSquare = 0x3C576F;

/// The lowest layer of the main window: the 64 squares and everything that is painted on one.
///
/// Square i stands in row i / 8 from the top and column i % 8 from the left. Its Tag holds the code of the Piece on it
/// as decimal text. Its ForeColor is the colour of the piece, kBlack or kWhite, and means nothing on an empty square.
/// An index outside 0 to 63 throws std::out_of_range, in every routine.
class SquarePainter : public Form {
 public:
  /// Makes 64 empty squares; they stand on the window after PlaceSquares.
  explicit SquarePainter(const FormStyle& style);

  ControlArray<PictureBox, kSquares> squ;

  /// Each puts its piece on square i, in place of what stood there, and paints it. flag is 0 for black, 1 for white.
  void Pawn(int i, int flag);
  void castle(int i, int flag);
  void bishop(int i, int flag);
  void knight(int i, int flag);
  void king(int i, int flag);
  void queen(int i, int flag);
  void checker(int i, int flag);
  void checkerking(int i, int flag);

  /// Paints the piece that the Tag of square i names in the colour c, or clears an empty square, whose ForeColor stays.
  /// Another Tag than 0 to 8 changes nothing; a colour that is neither kBlack nor kWhite becomes the nearer one.
  void drawmove(int i, Color c);

  /// Marks the empty square i in the colour c, until the next Cls. The Tag stays; ForeColor ends as kBlack.
  void hover(int i, Color c);

 protected:
  /// Places the squares on the window, behind all controls placed before.
  void PlaceSquares();

 private:
  PictureBox& Open(int i, Piece piece, int flag);
  void TaperedBody(int i, int d);
};

}  // namespace morva
