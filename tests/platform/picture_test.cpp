#include "platform/drawing/picture.h"

#include <gtest/gtest.h>

#include <QImage>
#include <random>

#include "platform/drawing/qt_color.h"
#include "platform/drawing/surface.h"

namespace morva {
namespace {

struct Sheet : Surface {
  Sheet() {
    drawn_ = [this] {
      if (!Strokes().empty()) all.push_back(Strokes().back());
    };
  }
  std::vector<Stroke> all;  ///< whatever was dropped
};

QImage ImageOf(const std::vector<Stroke>& strokes) { return PictureOf(strokes, kWhite, 52, 52, 1).toImage(); }

TEST(Pictures, StrokesThatAreRepeatedAreDroppedWithoutATrace) {
  Sheet sheet;
  sheet.FillSolid = true;
  std::mt19937 random(7);
  const auto some = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  for (int stroke = 0; stroke < 5000; ++stroke) {
    const std::size_t before = sheet.Strokes().size();
    sheet.DrawWidth = 1 + 6 * some(2);
    sheet.FillColor = sheet.ForeColor = static_cast<Color>(0x40 * some(4));
    const double x = 100.0 * some(8), y = 100.0 * some(8);
    some(2) == 0 ? sheet.Circle(x, y, 100) : sheet.Line(x, y, 400, 390);
    if (sheet.Strokes().size() < before) {
      EXPECT_EQ(ImageOf(sheet.Strokes()), ImageOf(sheet.all));
    }
  }
  EXPECT_LT(sheet.Strokes().size(), 2500U);
}

TEST(Pictures, PensAndFillsAreExact) {
  Sheet sheet;
  // Half pixels down the middle of pixel 20 and across at its ends.
  const auto row = [&](double x) {
    std::string text;
    const QImage image = PictureOf(sheet.Strokes(), kWhite, 52, 52, 2).toImage();
    for (int y = 18; y < 32; ++y) text += image.pixelColor(static_cast<int>(2 * x), y) == QtColor(kWhite) ? '.' : '#';
    return text;
  };
  for (int pen = 6; pen > 0; --pen) {
    sheet.Cls();
    sheet.DrawWidth = pen;
    sheet.Line(0, 180, 780, 180, kRed);
    EXPECT_EQ(row(20), std::string(7 - pen, '.') + std::string(2 * pen, '#') + std::string(7 - pen, '.'));
  }
  EXPECT_TRUE(row(0) == row(20) && row(51.5) == row(20)) << "a thin line has whole ends";
  sheet.Cls();
  EXPECT_EQ(row(20), std::string(14, '.'));
  sheet.FillColor = kRed;
  for (const bool solid : {false, true}) {
    sheet.FillSolid = solid;
    sheet.Circle(390, 390, 300);
    const QImage image = ImageOf(sheet.Strokes());
    EXPECT_EQ(image.pixelColor(26, 26), QtColor(solid ? kRed : kWhite));
    EXPECT_EQ(image.pixelColor(6, 26), QtColor(kBlack));
  }
}

}  // namespace
}  // namespace morva
