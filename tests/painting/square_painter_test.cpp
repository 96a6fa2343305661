#include "painting/square_painter.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QWidget>
#include <set>
#include <sstream>

#include "platform/drawing/picture.h"
#include "platform/drawing/pixels.h"
#include "platform/drawing/qt_color.h"

namespace morva {
namespace {

constexpr int kSide = 52;  // of a square's drawing area, pixels

struct Point {
  double x, y;  // twips
};

struct Board : SquarePainter {
  Board() : SquarePainter({.scale_width = 6720, .scale_height = 6720}) { PlaceSquares(); }
};

/// The strokes in the order drawn, and their number: kind, "!" where it is in the square's own colour, pen, and the
/// points, or centre and radius. Of the thin lines that make up a body there are only the first and the last.
std::string StrokesOf(const PictureBox& square, Color c) {
  const std::vector<Stroke>& strokes = square.Strokes();
  const auto thin = [&](std::size_t k) {
    return k < strokes.size() && strokes[k].kind == Stroke::Kind::kLine && strokes[k].draw_width == 1 &&
           strokes[k].color == c;
  };
  std::ostringstream text;
  for (std::size_t k = 0; k < strokes.size(); ++k) {
    if (thin(k - 1) && thin(k) && thin(k + 1)) continue;
    const Stroke& s = strokes[k];
    text << (s.kind == Stroke::Kind::kCircle ? "C" : "L") << (s.color == c ? "" : "!") << s.draw_width << ' ' << s.x1
         << ' ' << s.y1 << ' ' << s.x2;
    if (s.kind == Stroke::Kind::kLine) text << ' ' << s.y2;
    text << ", ";
    EXPECT_TRUE(s.color == c || s.color == square.BackColor());
  }
  text << strokes.size();
  return text.str();
}

QImage ImageOf(const PictureBox& square, double scale = 1) {
  return PictureOf(square.Strokes(), square.BackColor(), kSide, kSide, scale).toImage();
}

void ExpectAt(const std::vector<Point>& points, const QImage& image, Color c) {
  const double pixels = image.devicePixelRatio() / kTwipsPerPixel;
  for (const Point p : points) {
    const QColor pixel = image.pixelColor(static_cast<int>(p.x * pixels), static_cast<int>(p.y * pixels));
    EXPECT_EQ(pixel, QtColor(c)) << p.x << ", " << p.y;
  }
}

const std::string kStrokes[] = {
    "C1 390 220 80, L3 180 630 585 630, L1 425 300 495 630, L1 350 300 270 630, 20",
    "L15 390 280 390 540, L1 200 550 580 550, L1 200 700 580 700, L4 275 150 275 280, L4 375 150 375 280, "
    "L4 390 150 390 280, L4 490 150 490 280, 156",
    "L1 251 700 349.667 280, L1 550 700 449.333 280, C1 405 250 115, L!1 405 0 405 250, 302",
    "L1 301 700 399.667 280, L1 600 700 499.333 280, C1 465 250 115, L7 465 250 225 345, L7 440 200 225 345, "
    "L7 465 265 225 345, L!1 260 330 150 375, 305",
    "L1 251 700 349.667 280, L1 550 700 449.333 280, C1 405 250 80, L5 305 245 505 245, L5 405 150 405 280, 303",
    "L1 251 700 349.667 280, L1 550 700 449.333 280, C1 405 250 80, L3 405 150 405 280, L3 505 150 405 280, "
    "L3 305 150 405 280, 304",
    "C1 390 390 330, 1",
    "C1 390 390 330, C!3 390 390 230, 2"};

const struct {
  int top, bottom;  // between these rows, twips, the body is whole
  std::vector<Point> piece, square;
} kLooks[] = {{300, 630, {{390, 220}, {390, 450}, {195, 630}, {570, 630}}, {{390, 120}, {210, 450}, {580, 450}}},
              {550, 700, {{390, 400}, {210, 625}, {275, 200}, {490, 200}}, {{325, 150}, {440, 150}, {245, 450}}},
              {370, 700, {{345, 250}, {465, 250}, {275, 690}, {530, 690}}, {{412, 200}, {290, 400}, {520, 400}}},
              {410, 700, {{465, 250}, {310, 310}, {470, 160}}, {{315, 480}, {600, 450}, {225, 250}}},
              {330, 700, {{405, 250}, {320, 250}, {495, 250}, {405, 165}}, {{320, 160}, {495, 160}, {290, 400}}},
              {330, 700, {{405, 250}, {405, 160}, {483, 183}, {333, 183}}, {{443, 142}, {367, 142}, {290, 400}}},
              {80, 700, {{80, 390}, {700, 390}, {390, 80}, {390, 700}}, {{115, 115}, {750, 390}}},
              {80, 130, {{390, 390}, {80, 390}, {390, 260}}, {{397, 165}, {622, 397}, {165, 397}, {115, 115}}}};

TEST(SquarePainter, PaintsEachPieceSolidAndSmoothWithTheSquareAroundIt) {
  Board board;
  for (int code = 1; code <= 8; ++code) {
    const auto& looks = kLooks[code - 1];
    for (const auto& [i, c] : {std::pair{0, kBlack}, {0, kWhite}, {1, kBlack}, {1, kWhite}}) {
      SCOPED_TRACE(testing::Message() << code << " on " << i << " in " << c);
      PictureBox& square = board.squ(i);
      board.queen(i, c == kWhite ? 0 : 1);  // leaves nothing behind
      square.Tag = std::to_string(code);
      board.drawmove(i, c);
      EXPECT_EQ(StrokesOf(square, c), kStrokes[code - 1]);
      EXPECT_EQ(square.Tag, std::to_string(code));
      EXPECT_TRUE(square.ForeColor == c && square.FillColor == c && square.DrawWidth == 1);
      for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        const QImage image = ImageOf(square, scale);
        ExpectAt(looks.piece, image, c);
        ExpectAt(looks.square, image, square.BackColor());
        std::set<QRgb> shades;
        for (int y = 0; y < image.height(); ++y) {
          int runs = 0;  // of pixels in the piece's colour
          for (int x = 1; x < image.width(); ++x) {
            const QRgb piece = QtColor(c).rgb();
            if (image.pixel(x, y) == piece && image.pixel(x - 1, y) != piece) ++runs;
            shades.insert(image.pixel(x, y));
          }
          const bool whole = y * 15 >= looks.top * scale && (y + 1) * 15 <= looks.bottom * scale;
          EXPECT_TRUE(runs == 1 || !whole) << "row " << y << " at scale " << scale;
        }
        EXPECT_GE(shades.size(), 6U) << scale;
      }
    }
  }
}

TEST(SquarePainter, SquaresStartEmptyInTwoColoursAndFollowTheirTag) {
  Board board;
  for (const int light : {0, 2, 9, 63}) {
    EXPECT_TRUE(board.squ(light).BackColor() == kLightSquare && board.squ(light).ForeColor == kBlack) << light;
  }
  for (const int dark : {1, 8, 56, 62}) {
    EXPECT_TRUE(board.squ(dark).BackColor() == kDarkSquare && board.squ(dark).ForeColor == kWhite) << dark;
  }
  PictureBox& square = board.squ(20);
  EXPECT_TRUE(square.Tag == "0" && square.AutomaticDrag && square.FillSolid && square.Strokes().empty());
  EXPECT_THROW(board.squ(64), std::out_of_range);

  board.queen(20, 1);
  const auto queen = square.Strokes();
  for (const std::string bad : {"9", "155", "-1", "-100"}) {
    square.Tag = bad;
    board.drawmove(20, kBlack);
    EXPECT_TRUE(square.Strokes() == queen && square.ForeColor == kWhite && square.Tag == bad) << bad;
  }
  square.Tag = "0";
  board.drawmove(20, kBlack);
  EXPECT_TRUE(square.Strokes().empty() && square.ForeColor == kWhite);
  for (const auto& [asked, painted] : {std::pair{8388607U, kBlack}, {8388608U, kWhite}, {4294967295U, kWhite}}) {
    square.Tag = "7";
    board.drawmove(20, asked);
    EXPECT_EQ(square.ForeColor, painted) << asked;
  }
}

TEST(SquarePainter, HoverMarksTheSquareHoweverOften) {
  Board board;
  PictureBox& square = board.squ(1);
  for (const Color c : {kBlack, kWhite}) {
    square.Cls();
    board.hover(1, c);
    EXPECT_EQ(StrokesOf(square, c),
              "L40 390 0 390 840, L!14 0 0 780 780, L!14 0 780 780 0, L!14 0 0 0 780, L!14 0 0 780 0, "
              "L!14 0 780 780 780, L!14 780 0 780 780, C4 390 390 30, 8");
    EXPECT_TRUE(square.Tag == "0" && square.ForeColor == kBlack && square.DrawWidth == 1);
    const QImage once = ImageOf(square);
    ExpectAt({{390, 150}, {390, 630}, {150, 390}, {630, 390}, {390, 390}}, once, c);
    ExpectAt({{200, 200}, {580, 200}, {200, 580}, {580, 580}, {30, 390}, {390, 30}}, once, kDarkSquare);
    for (int time = 1; time < 500; ++time) board.hover(1, c);
    EXPECT_EQ(ImageOf(square), once);
    EXPECT_LT(square.Strokes().size(), 2000U);
  }
}

TEST(SquarePainter, TheWindowShowsWhatIsPainted) {
  Board board;
  board.Show();
  QWidget* square = board.squ(9).Native();
  EXPECT_EQ(square->geometry(), QRect(56, 56, 56, 56));
  const auto shown = [square] { return square->grab(QRect(2, 2, kSide, kSide)).toImage(); };
  const QImage bare = shown();
  EXPECT_EQ(bare.pixelColor(0, 0), QtColor(kLightSquare));
  board.queen(9, 1);
  EXPECT_EQ(shown().convertToFormat(QImage::Format_RGB32), ImageOf(board.squ(9)).convertToFormat(QImage::Format_RGB32));
  board.squ(9).Cls();
  EXPECT_EQ(shown(), bare);
}

}  // namespace
}  // namespace morva
