// A small still-life renderer: turned and carved pieces on a polished board, under one warm lamp.
#pragma once

#include <QImage>
#include <QPainterPath>
#include <vector>

namespace morva::pictures {

struct Vec {
  float x = 0, y = 0, z = 0;
};

// Signed distance to the outline of a flat path, negative inside, sampled on a grid.
class Field {
 public:
  // The path is in thousandths of a board square, y upwards; `margin` is in squares.
  // With `filled` false the path is a line of no width: all distances are positive.
  explicit Field(const QPainterPath& path, bool filled = true, float margin = 0.15f);
  // Distance in squares at a point given in squares. Outside the grid it is never more than the true one.
  float at(float x, float y) const;
  // The box that holds the path and the margin, in squares.
  QRectF box() const { return box_; }

 private:
  QRectF box_;
  int columns_ = 0, rows_ = 0;
  float cell_ = 0;
  std::vector<float> values_;
};

struct Material {
  Vec colour;           // linear light, 0 to 1
  float gloss = 0.3f;   // strength of the highlight
  float sharp = 30.0f;  // its exponent
};

// A piece is a body turned on the lathe, with a carved part on top where it has one.
struct Form {
  const Field* turned = nullptr;
  const Field* carved = nullptr;
  const Field* engraved = nullptr;  // lines cut into the carved part
  float half_depth = 0.1f;          // of the carved part at the foot, in squares
  float taper = 0;                  // how much of it is lost for each square upwards
  float round = 0.08f;              // radius of its edges
};

struct Piece {
  Form form;
  Material material;
  Vec place;       // of the middle of the foot, in squares; the board lies at y 0
  float turn = 0;  // radians about the upright axis
};

struct Scene {
  std::vector<Piece> pieces;
  float board_shift_x = 0;  // moves the pattern of squares, in squares
  float board_shift_z = 0;
  Vec eye{0, 2, 6}, target{0, 0.5f, 0};
  float angle = 0.5f;  // height of what is seen at a distance of one square, in squares
  float lens = 0;      // radius of the lens in squares: 0 keeps everything sharp
  float focus = 6;     // distance at which it is sharp
  Vec lamp{-4, 5, 2};
  Vec lamp_colour{30, 26, 20};    // falls off with the square of the distance
  Vec lamp_aim{0, 0, 0};          // where the pool of light lies on the board
  float pool = 4;                 // its radius in squares
  Vec sky{0.05f, 0.045f, 0.04f};  // light from everywhere
  Vec rim{0, 0, 0};               // light from behind, along `rim_from`
  Vec rim_from{0.6f, 0.4f, -0.7f};
  Vec haze{0.012f, 0.008f, 0.005f};  // what the distance fades into
  Vec glow{0, 0, 0};                 // a soft light on the wall behind the board
  Vec glow_at{0, 1, -6};             // its middle
  float glow_width = 0.2f;           // and how far it spreads, as a tangent
};

// Linear light of a colour as written in style sheets, such as 0xc4ae8a.
Vec linear(unsigned rgb);

// Draws the scene, opaque, with up to `samples` rays a pixel. The same scene gives the same picture on every run.
QImage render(const Scene& scene, int width, int height, int samples);

}  // namespace morva::pictures
