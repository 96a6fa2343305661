#pragma once

#include <compare>
#include <functional>
#include <vector>

#include "platform/drawing/colors.h"

namespace morva {

/// One line or circle on a surface, in twips; a pen width in pixels. A circle has its radius in x2.
struct Stroke {
  enum class Kind : int { kLine, kCircle };
  Kind kind;
  float x1, y1, x2, y2;
  int draw_width;
  Color color;
  Color fill;
  int filled;
  auto operator<=>(const Stroke&) const = default;  // NOLINT(modernize-use-nullptr): it takes the 0 of the operator
};

/// What can be drawn on: lines and circles stay until Cls, through every repaint and at every scale of the screen.
/// Lengths are twips from the top left corner of the drawing area; a line has round ends, a thin one covers whole
/// pixels.
class Surface {
 public:
  Color ForeColor = kBlack;  ///< lines and rims drawn from now on
  Color FillColor = kBlack;  ///< inside of circles drawn from now on, where FillSolid
  int DrawWidth = 1;         ///< pixels, of lines and rims drawn from now on
  bool FillSolid = false;    ///< whether a circle is a filled disc or only its rim

  /// Clears to the background.
  void Cls();
  void Line(double x1, double y1, double x2, double y2) { Line(x1, y1, x2, y2, ForeColor); }
  void Line(double x1, double y1, double x2, double y2, Color color);
  void Circle(double x, double y, double radius) { Circle(x, y, radius, ForeColor); }
  void Circle(double x, double y, double radius, Color color);

  /// The strokes since the last Cls, oldest first, without those that are repeated later.
  const std::vector<Stroke>& Strokes() const { return strokes_; }

 protected:
  std::function<void()> drawn_;  ///< called after each change of the picture

 private:
  void Add(const Stroke& stroke);
  std::vector<Stroke> strokes_;
};

}  // namespace morva
