#include "platform/picture.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QWidget>
#include <cmath>
#include <random>
#include <set>

#include "painting/square_painter.h"
#include "platform/qt_values.h"

namespace morva {
namespace {

constexpr int kSide = 52;  // of a square's drawing area, pixels
constexpr double kScales[] = {1, 1.25, 1.5, 2};

struct Point {
  double x, y;  // twips
};

struct Sheet : Surface {
  Sheet() {
    drawn_ = [this] {
      if (!Strokes().empty()) all.push_back(Strokes().back());
    };
  }
  std::vector<Stroke> all;  ///< whatever was dropped
};

/// The squares without a window.
struct Squares : SquarePainter {
  Squares() : SquarePainter(FormStyle{}) {}
  const PictureBox& With(int i, int code, Color c) {
    squ(i).Tag = std::to_string(code);
    drawmove(i, c);
    return squ(i);
  }
};

QImage ImageOf(const Surface& surface, Color background, double scale = 1) {
  return PictureOf(surface.Strokes(), background, kSide, kSide, scale).toImage();
}

QImage ImageOf(const PictureBox& square, double scale = 1) { return ImageOf(square, square.BackColor(), scale); }

QRgb PixelAt(const QImage& image, Point at) {
  const double pixels = image.devicePixelRatio() / kTwipsPerPixel;
  return image.pixel(static_cast<int>(at.x * pixels), static_cast<int>(at.y * pixels));
}

QRgb Rgb(Color color) { return QtColor(color).rgb(); }

TEST(Pictures, ShowEachPieceWhereItStandsAndTheSquareAroundIt) {
  const struct {
    int code;
    std::vector<Point> piece, square;
  } pieces[] = {
      {1, {{390, 220}, {390, 450}, {390, 630}, {195, 630}, {570, 630}}, {{390, 120}, {210, 450}, {580, 450}}},
      {2,
       {{390, 400}, {390, 620}, {210, 625}, {570, 690}, {275, 200}, {382, 200}, {490, 200}},
       {{325, 150}, {440, 150}, {245, 450}, {540, 450}, {100, 625}}},
      {3,
       {{405, 450}, {345, 250}, {465, 250}, {275, 690}, {530, 690}},
       {{412, 200}, {412, 150}, {290, 400}, {520, 400}}},
      {4, {{465, 250}, {310, 310}, {455, 450}, {470, 160}}, {{315, 480}, {600, 450}, {140, 300}, {225, 250}}},
      {5, {{405, 250}, {320, 250}, {495, 250}, {405, 165}, {405, 500}}, {{320, 160}, {495, 160}, {290, 400}}},
      {6, {{405, 250}, {405, 160}, {483, 183}, {333, 183}, {405, 500}}, {{443, 142}, {367, 142}, {290, 400}}},
      {7, {{390, 390}, {80, 390}, {700, 390}, {390, 80}, {390, 700}}, {{30, 30}, {115, 115}, {750, 390}}},
      {8,
       {{390, 390}, {80, 390}, {390, 260}, {660, 390}},
       {{397, 165}, {622, 397}, {165, 397}, {397, 622}, {115, 115}}},
  };
  Squares board;
  for (const auto& expected : pieces) {
    for (const auto& [i, c] : {std::pair{0, kBlack}, {0, kWhite}, {1, kBlack}, {1, kWhite}}) {
      for (const double scale : kScales) {
        SCOPED_TRACE(testing::Message() << expected.code << " on " << i << " at scale " << scale);
        const QImage image = ImageOf(board.With(i, expected.code, c), scale);
        const QRgb bare = Rgb(board.squ(i).BackColor());
        for (const Point p : expected.piece) EXPECT_EQ(PixelAt(image, p), Rgb(c)) << p.x << ", " << p.y;
        for (const Point p : expected.square) EXPECT_EQ(PixelAt(image, p), bare) << p.x << ", " << p.y;
        std::set<QRgb> edge;
        for (int k = 0; k < image.width(); ++k) {
          for (const int side : {0, image.width() - 1}) edge.insert({image.pixel(k, side), image.pixel(side, k)});
        }
        EXPECT_EQ(edge, std::set<QRgb>{bare});
      }
    }
  }
}

TEST(Pictures, BodiesHaveNoSeamsAndEdgesAreSmooth) {
  const struct {
    int code;
    double top, top_left, top_right, bottom, left, right;  // twips
  } bodies[] = {{1, 300, 350, 425, 630, 270, 495}, {2, 550, 200, 580, 700, 200, 580},
                {3, 370, 328, 471, 700, 251, 550}, {4, 410, 369, 531, 700, 301, 600},
                {5, 330, 338, 461, 700, 251, 550}, {7, 160, 160, 620, 620, 160, 620}};
  Squares board;
  for (const auto& body : bodies) {
    for (const double scale : kScales) {
      const QImage image = ImageOf(board.With(1, body.code, kBlack), scale);
      const double pixel = kTwipsPerPixel / scale;
      int inside = 0;
      std::set<QRgb> shades;
      for (int y = 0; y < image.height(); ++y) {
        const double way = (y * pixel - body.top) / (body.bottom - body.top);
        const double left = body.top_left + way * (body.left - body.top_left) + 15;
        const double right = body.top_right + way * (body.right - body.top_right) - 15;
        for (int x = 0; x < image.width(); ++x) {
          shades.insert(image.pixel(x, y));
          if (way < 0 || (y + 1) * pixel > body.bottom || x * pixel < left || (x + 1) * pixel > right) continue;
          ++inside;
          ASSERT_EQ(image.pixel(x, y), Rgb(kBlack)) << body.code << " at " << x << ", " << y << ", scale " << scale;
        }
      }
      EXPECT_TRUE(inside > 80 * scale * scale && shades.size() >= 6) << body.code << ", scale " << scale;
    }
  }
}

TEST(Pictures, CutOutsHaveTheColourOfTheSquare) {
  Squares board;
  board.squ(0).BackColor = kRed;
  for (const auto& [code, cut] : {std::pair{3, Point{412, 200}}, {4, Point{205, 363}}, {8, Point{397, 165}}}) {
    const QRgb pixel = PixelAt(ImageOf(board.With(0, code, kBlack)), cut);
    EXPECT_TRUE(qRed(pixel) > 100 && qGreen(pixel) == 0) << code;
  }
}

TEST(Pictures, StrokesThatAreRepeatedAreDroppedWithoutATrace) {
  Squares board;
  for (const double scale : {1.0, 1.5}) {
    board.squ(1).Cls();
    board.hover(1, kWhite);
    const QImage once = ImageOf(board.squ(1), scale);
    for (const Point mark : {Point{390, 150}, {390, 630}, {150, 390}, {630, 390}, {390, 390}}) {
      EXPECT_EQ(PixelAt(once, mark), Rgb(kWhite)) << mark.x;
    }
    for (const Point bare : {Point{200, 200}, {580, 200}, {200, 580}, {580, 580}, {30, 390}, {390, 30}}) {
      EXPECT_EQ(PixelAt(once, bare), Rgb(kDarkSquare)) << bare.x;
    }
    for (int time = 1; time < 500; ++time) board.hover(1, kWhite);
    EXPECT_EQ(ImageOf(board.squ(1), scale), once);
    EXPECT_LT(board.squ(1).Strokes().size(), 2000U);
  }
  Sheet sheet;
  sheet.FillSolid = true;
  std::mt19937 random(7);
  const auto some = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  for (int stroke = 0; stroke < 10000; ++stroke) {
    sheet.DrawWidth = 1 + 6 * some(2);
    sheet.FillColor = sheet.ForeColor = static_cast<Color>(0x40 * some(4));
    const double x = 100.0 * some(8), y = 100.0 * some(8);
    some(2) == 0 ? sheet.Circle(x, y, 100) : sheet.Line(x, y, 400, 390);
  }
  EXPECT_EQ(ImageOf(sheet, kWhite), PictureOf(sheet.all, kWhite, kSide, kSide, 1).toImage());
  EXPECT_LT(sheet.Strokes().size(), 5000U);
}

TEST(Pictures, PensAndFillsAreExact) {
  Sheet sheet;
  const auto row = [&] {
    std::string text;
    for (int y = 8; y < 16; ++y) text += ImageOf(sheet, kWhite).pixel(20, y) == Rgb(kWhite) ? '.' : '#';
    return text;
  };
  sheet.Line(0, 150, 780, 150);
  EXPECT_EQ(row(), "..#.....");
  sheet.DrawWidth = 4;
  sheet.Line(0, 180, 780, 180, kRed);
  EXPECT_EQ(row(), "..####..");
  sheet.Cls();
  EXPECT_EQ(row(), "........");
  sheet.DrawWidth = 1;
  sheet.FillColor = kRed;
  for (const bool solid : {false, true}) {
    sheet.FillSolid = solid;
    sheet.Circle(390, 390, 300);
    EXPECT_EQ(PixelAt(ImageOf(sheet, kWhite), {390, 390}), Rgb(solid ? kRed : kWhite));
    EXPECT_EQ(PixelAt(ImageOf(sheet, kWhite), {90, 397}), Rgb(kBlack));
  }
}

TEST(Pictures, StayOnTheWindowUntilCls) {
  struct Window : SquarePainter {
    Window() : SquarePainter(FormStyle{.scale_width = 6720, .scale_height = 6720}) { PlaceSquares(); }
  } window;
  window.Show();
  QWidget* square = window.squ(9).Native();
  EXPECT_EQ(square->geometry(), QRect(56, 56, 56, 56));
  const auto shows = [&](const QImage& image) {
    const QImage shown = square->grab(QRect(2, 2, kSide, kSide)).toImage();
    return shown.convertToFormat(QImage::Format_RGB32) == image.convertToFormat(QImage::Format_RGB32);
  };
  window.queen(9, 1);
  const QImage queen = ImageOf(window.squ(9));
  EXPECT_TRUE(shows(queen));
  window.Hide();
  window.Show();
  EXPECT_TRUE(shows(queen));
  window.squ(9).Cls();
  QImage bare(kSide, kSide, QImage::Format_RGB32);
  bare.fill(Rgb(kLightSquare));
  EXPECT_TRUE(shows(bare));
}

}  // namespace
}  // namespace morva
