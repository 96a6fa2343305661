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

/// The squares without a window, and their pictures.
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

TEST(Pictures, ShowEachPieceWhereItStandsAndTheSquareWhereItDoesNot) {
  const struct {
    int code;
    std::vector<Point> piece, square;
  } pieces[] = {
      {1, {{390, 220}, {390, 450}, {390, 630}, {195, 630}, {570, 630}}, {{390, 120}, {210, 450}, {580, 450}, {390, 700}}},
      {2,
       {{390, 400}, {390, 620}, {210, 625}, {570, 690}, {275, 200}, {382, 200}, {490, 200}},
       {{325, 150}, {440, 150}, {245, 450}, {540, 450}, {100, 625}, {390, 740}}},
      {3,
       {{405, 450}, {345, 250}, {465, 250}, {405, 330}, {275, 690}, {530, 690}},
       {{412, 200}, {412, 150}, {290, 400}, {520, 400}, {200, 690}}},
      {4, {{465, 250}, {310, 310}, {455, 450}, {470, 160}}, {{315, 480}, {600, 450}, {140, 300}, {225, 250}}},
      {5, {{405, 250}, {320, 250}, {495, 250}, {405, 165}, {405, 500}}, {{320, 160}, {495, 160}, {290, 400}}},
      {6, {{405, 250}, {405, 160}, {483, 183}, {333, 183}, {405, 500}}, {{443, 142}, {367, 142}, {290, 400}}},
      {7, {{390, 390}, {80, 390}, {700, 390}, {390, 80}, {390, 700}, {180, 180}}, {{30, 30}, {115, 115}, {750, 390}}},
      {8,
       {{390, 390}, {80, 390}, {390, 260}, {390, 90}, {660, 390}},
       {{397, 165}, {622, 397}, {165, 397}, {397, 622}, {30, 30}, {115, 115}}},
  };
  Squares board;
  for (const auto& expected : pieces) {
    for (const int i : {0, 1}) {  // one light, one dark
      for (const Color c : {kBlack, kWhite}) {
        for (const double scale : kScales) {
          const QImage image = ImageOf(board.With(i, expected.code, c), scale);
          EXPECT_EQ(image.width(), std::ceil(kSide * scale));
          const auto where = [&](Point p) {
            return testing::Message() << expected.code << " at " << p.x << ", " << p.y << ", scale " << scale;
          };
          for (const Point p : expected.piece) EXPECT_EQ(PixelAt(image, p), Rgb(c)) << where(p);
          for (const Point p : expected.square) {
            EXPECT_EQ(PixelAt(image, p), Rgb(board.squ(i).BackColor())) << where(p);
          }
          std::set<QRgb> edge;
          for (int k = 0; k < image.width(); ++k) {
            for (const int side : {0, image.width() - 1}) edge.insert({image.pixel(k, side), image.pixel(side, k)});
          }
          EXPECT_EQ(edge, std::set<QRgb>{Rgb(board.squ(i).BackColor())}) << expected.code;
        }
      }
    }
  }
}

TEST(Pictures, BodiesHaveNoSeamsAndEdgesAreSmooth) {
  const struct {
    int code;
    double top, top_left, top_right, bottom, left, right;  // twips
  } bodies[] = {{1, 300, 350, 425, 630, 270, 495}, {2, 550, 200, 580, 700, 200, 580}, {3, 370, 328, 471, 700, 251, 550},
                {4, 410, 369, 531, 700, 301, 600}, {5, 330, 338, 461, 700, 251, 550}, {6, 330, 338, 461, 700, 251, 550},
                {7, 160, 160, 620, 620, 160, 620}};
  Squares board;
  for (const auto& body : bodies) {
    for (const double scale : kScales) {
      const QImage image = ImageOf(board.With(1, body.code, kBlack), scale);
      const double twips = kTwipsPerPixel / scale;
      int inside = 0;
      std::set<QRgb> shades;
      for (int y = 0; y < image.height(); ++y) {
        const double way = (y * twips - body.top) / (body.bottom - body.top);
        const double left = body.top_left + way * (body.left - body.top_left) + 15;
        const double right = body.top_right + way * (body.right - body.top_right) - 15;
        for (int x = 0; x < image.width(); ++x) {
          shades.insert(image.pixel(x, y));
          if (way < 0 || (y + 1) * twips > body.bottom || x * twips < left || (x + 1) * twips > right) continue;
          ++inside;
          ASSERT_EQ(image.pixel(x, y), Rgb(kBlack)) << body.code << " at " << x << ", " << y << ", scale " << scale;
        }
      }
      EXPECT_GT(inside, 80 * scale * scale) << body.code;
      EXPECT_GE(shades.size(), 6U) << body.code << ", scale " << scale;
    }
  }
}

TEST(Pictures, CutOutsHaveTheColourOfTheSquare) {
  Squares board;
  for (const auto& [code, cut] : {std::pair{3, Point{412, 200}}, {4, Point{205, 363}}, {8, Point{397, 165}}}) {
    const PictureBox& square = board.With(0, code, kBlack);
    const QImage on_light = ImageOf(square);
    board.squ(0).BackColor = kRed;
    const QImage on_red = ImageOf(board.With(0, code, kBlack));
    board.squ(0).BackColor = kLightSquare;
    EXPECT_NE(PixelAt(on_light, cut), Rgb(kBlack)) << code;
    EXPECT_GT(qRed(PixelAt(on_red, cut)), 100) << code;
    EXPECT_EQ(qGreen(PixelAt(on_red, cut)), 0) << code;
  }
}

TEST(Pictures, TheHoverMarkIsTheSameHoweverOftenItIsDrawn) {
  Squares board;
  for (const Color c : {kBlack, kWhite}) {
    for (const double scale : {1.0, 1.5}) {
      board.squ(1).Cls();
      board.hover(1, c);
      const QImage once = ImageOf(board.squ(1), scale);
      for (const Point triangle : {Point{390, 150}, {390, 630}, {150, 390}, {630, 390}, {390, 390}}) {
        EXPECT_EQ(PixelAt(once, triangle), Rgb(c)) << triangle.x;
      }
      for (const Point bare : {Point{200, 200}, {580, 200}, {200, 580}, {580, 580}, {30, 390}, {390, 30}}) {
        EXPECT_EQ(PixelAt(once, bare), Rgb(kDarkSquare)) << bare.x;
      }
      for (int time = 1; time < 500; ++time) board.hover(1, c);
      EXPECT_EQ(ImageOf(board.squ(1), scale), once);
      EXPECT_LT(board.squ(1).Strokes().size(), 3000U);
    }
  }
}

TEST(Pictures, RepeatedStrokesAreDroppedWithoutATrace) {
  struct Sheet : Surface {
    Sheet() { drawn_ = [this] { all.push_back(Strokes().back()); }; }
    std::vector<Stroke> all;
  } sheet;
  std::mt19937 random(7);
  const auto some = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  sheet.FillSolid = true;
  for (int stroke = 0; stroke < 20000; ++stroke) {
    sheet.DrawWidth = 1 + 6 * some(2);
    sheet.FillColor = sheet.ForeColor = static_cast<Color>(0x40 * some(4));
    const double x = 100.0 * some(8), y = 100.0 * some(8);
    if (some(2) == 0) {
      sheet.Circle(x, y, 100);
    } else {
      sheet.Line(x, y, 400, 390);
    }
  }
  EXPECT_EQ(ImageOf(sheet, kWhite), PictureOf(sheet.all, kWhite, kSide, kSide, 1).toImage());
  EXPECT_LT(sheet.Strokes().size(), 5000U);
}

TEST(Pictures, PensAndFillsAreExact) {
  struct Sheet : Surface {
  } sheet;
  const QRgb white = Rgb(kWhite), black = Rgb(kBlack);
  sheet.Line(0, 150, 780, 150);
  QImage image = ImageOf(sheet, kWhite);
  EXPECT_TRUE(image.pixel(20, 10) == black && image.pixel(20, 9) == white && image.pixel(20, 11) == white);
  sheet.DrawWidth = 4;
  sheet.Line(390, 300, 390, 600, kRed);
  image = ImageOf(sheet, kWhite);
  for (int x = 22; x < 30; ++x) EXPECT_EQ(image.pixel(x, 30), x >= 24 && x < 28 ? Rgb(kRed) : white) << x;
  sheet.Cls();
  sheet.DrawWidth = 1;
  sheet.FillColor = kRed;
  sheet.Circle(390, 390, 300);
  EXPECT_EQ(PixelAt(ImageOf(sheet, kWhite), {390, 390}), white);
  sheet.FillSolid = true;
  sheet.Circle(390, 390, 300);
  EXPECT_EQ(PixelAt(ImageOf(sheet, kWhite), {390, 390}), Rgb(kRed));
  EXPECT_EQ(PixelAt(ImageOf(sheet, kWhite), {90, 397}), black);
}

TEST(Pictures, StayOnTheWindowUntilCls) {
  struct Window : SquarePainter {
    Window() : SquarePainter(FormStyle{.scale_width = 6720, .scale_height = 6720}) { PlaceSquares(); }
  } window;
  window.Show();
  QWidget* square = window.squ(9).Native();
  EXPECT_EQ(square->geometry(), QRect(56, 56, 56, 56));
  const auto shown = [&] { return square->grab(QRect(2, 2, kSide, kSide)).toImage(); };
  const auto same = [](const QImage& a, const QImage& b) {
    return a.convertToFormat(QImage::Format_RGB32) == b.convertToFormat(QImage::Format_RGB32);
  };
  window.queen(9, 1);
  const QImage queen = ImageOf(window.squ(9));
  EXPECT_TRUE(same(shown(), queen));
  window.Hide();
  window.Show();
  EXPECT_TRUE(same(shown(), queen));
  window.squ(9).Cls();
  EXPECT_EQ(window.squ(9).Tag, "6");
  QImage bare(kSide, kSide, QImage::Format_RGB32);
  bare.fill(Rgb(kLightSquare));
  EXPECT_TRUE(same(shown(), bare));
}

}  // namespace
}  // namespace morva
