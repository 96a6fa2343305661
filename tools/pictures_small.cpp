#include "pictures_small.h"

#include <QPainter>
#include <QPainterPath>
#include <array>

#include "pictures_shapes.h"

namespace morva::pictures {
namespace {

// '#' outline, 'o' white, '-' white in shade, 'c' cyan, 'l' cyan in light, 'd' cyan in shade.
constexpr std::array<const char*, 32> kHand = {
    "...................###..........",  //
    "..................#ooo#.........",  //
    "..................#ooo#.........",  //
    "..................#ooo#.........",  //
    "..................#ooo#.........",  //
    "..................#ooo#.........",  //
    "..................#ooo#.........",  //
    "..................#ooo#.........",  //
    "..................#ooo#.........",  //
    "..................#ooo###.......",  //
    "..................#ooo#oo#......",  //
    "..................#ooo#oo###....",  //
    "............##....#ooo#oo#oo#...",  //
    "...........#oo#...#ooo#oo#oo##..",  //
    "...........#ooo#..#ooo#oo#oo#o#.",  //
    "...........#oooo#.#ooo#oo#oo#oo#",  //
    "............#oooo##ooo-oo-oo-oo#",  //
    ".............#oooo#oooooooooooo#",  //
    ".............#oooooooooooooooo-#",  //
    "..............#ooooooooooooooo-#",  //
    "..............#ooooooooooooooo-#",  //
    "...............#ooooooooooooo-#.",  //
    "...............#ooooooooooooo-#.",  //
    "................#oooooooooo--#..",  //
    "................#ooooooooo---#..",  //
    "...............################.",  //
    "...............#llccccccccccdd#.",  //
    "...............#lcccccccccccdd#.",  //
    "...............#lcccccccccccdd#.",  //
    "...............#lcccccccccccdd#.",  //
    "...............#lcccccccccccdd#.",  //
    "...............################.",  //
};

// '#' the eye, 'w' cream, '+' cream half over the wood.
constexpr std::array<const char*, 16> kKnight = {
    "................",  //
    ".......w........",  //
    "......ww........",  //
    "......wwww+.....",  //
    ".....wwwwwww....",  //
    "....w#wwwwww+...",  //
    "...wwwwwwwwww...",  //
    "..wwwwwwwwwww...",  //
    "..www+.+wwwww...",  //
    "...+...wwwwww...",  //
    "......wwwwww+...",  //
    ".....+wwwwww....",  //
    ".....wwwwwww....",  //
    "...wwwwwwwwwww..",  //
    "................",  //
    "................",  //
};

QRgb ink(char mark) {
  switch (mark) {
    case '#':
      return 0xff000000;
    case 'o':
      return 0xffffffff;
    case '-':
      return 0xffc8ccd0;
    case 'c':
      return 0xff00c4d4;
    case 'l':
      return 0xff7fe9f2;
    case 'd':
      return 0xff008ea0;
    case 'w':
      return 0xfff8ecd2;
    case '+':
      return 0xffb09a7c;
    default:
      return 0;
  }
}

QImage small_hand() {
  QImage image(32, 32, QImage::Format_ARGB32);
  for (int y = 0; y < 32; ++y)
    for (int x = 0; x < 32; ++x) image.setPixel(x, y, ink(kHand[size_t(y)][x]));
  return image;
}

QPainterPath bar(double x, double y, double width, double height, double round) {
  QPainterPath path;
  path.addRoundedRect(QRectF(x, y, width, height), round, round);
  return path;
}

QImage large_hand() {
  QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);

  QPainterPath palm(QPointF(37, 37));
  palm.lineTo(63, 34);
  palm.lineTo(63, 40);
  palm.cubicTo(63, 46, 59, 46, 58, 51);
  palm.lineTo(33, 51);
  palm.cubicTo(31, 44, 26, 39, 23.5, 31.5);
  palm.cubicTo(21.5, 26, 27.5, 23.5, 30.5, 28.5);
  palm.cubicTo(32.5, 32, 34, 34.5, 37, 37);
  palm.closeSubpath();
  QPainterPath outline = palm;
  outline = outline.united(bar(37, 1, 8, 44, 4));
  outline = outline.united(bar(45, 19, 6, 26, 3));
  outline = outline.united(bar(51, 22, 6, 22, 3));
  outline = outline.united(bar(57, 26, 6, 18, 3));

  QLinearGradient skin(32, 0, 64, 0);
  skin.setColorAt(0, Qt::white);
  skin.setColorAt(0.65, Qt::white);
  skin.setColorAt(1, QColor(0xc8ccd0));
  const QPen pen(Qt::black, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  painter.setPen(pen);
  painter.setBrush(skin);
  painter.drawPath(outline);
  for (const double x : {45.0, 51.0, 57.0}) painter.drawLine(QPointF(x, 27), QPointF(x, 33));
  painter.drawLine(QPointF(45, 21), QPointF(45, 33));
  painter.drawLine(QPointF(51, 25), QPointF(51, 33));
  painter.drawLine(QPointF(37, 30), QPointF(37, 37));

  QLinearGradient cuff(31, 0, 61, 0);
  cuff.setColorAt(0, QColor(0x7fe9f2));
  cuff.setColorAt(0.25, QColor(0x00c4d4));
  cuff.setColorAt(0.7, QColor(0x00c4d4));
  cuff.setColorAt(1, QColor(0x008ea0));
  painter.setBrush(cuff);
  painter.drawPath(bar(31, 51, 30, 12, 2));
  return image;
}

}  // namespace

QImage small_icon(int size) {
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool tiny = size <= 16;
  const double round = tiny ? 3 : 5.5;

  QLinearGradient wood(0, 0, 0, size);
  wood.setColorAt(0, QColor(0x86694a));
  wood.setColorAt(1, QColor(0x4a3320));
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0x24170d));
  painter.drawRoundedRect(QRectF(0, 0, size, size), round, round);
  painter.setBrush(wood);
  painter.drawRoundedRect(QRectF(1, 1, size - 2, size - 2), round - 1, round - 1);

  if (tiny) {
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (int y = 0; y < 16; ++y)
      for (int x = 0; x < 16; ++x)
        if (const QRgb colour = ink(kKnight[size_t(y)][x])) painter.fillRect(x, y, 1, 1, QColor::fromRgba(colour));
    return image;
  }

  // The foot stands on whole pixels, so that it is as sharp as the tile.
  const QColor cream(0xf8ecd2), brown(0x3a2617);
  const bool small = size <= 24;
  painter.fillRect(small ? QRect(6, 19, 13, 2) : QRect(8, 25, 17, 3), cream);
  painter.fillRect(small ? QRect(7, 17, 11, 1) : QRect(10, 23, 13, 1), cream);
  painter.translate(small ? QPointF(13, 21) : QPointF(17, 28));
  const double scale = small ? 0.0145 : 0.0196;  // pixels in a thousandth of a square
  painter.scale(scale, -scale);
  QPainterPath above_foot;
  above_foot.addRect(-500, 252, 1000, 1200);
  painter.fillPath(knight_head().intersected(above_foot), cream);
  QPainterPath mane(QPointF(-70, 1190));
  mane.cubicTo(70, 1080, 142, 910, 142, 730);
  mane.cubicTo(142, 600, 120, 480, 100, 390);
  painter.strokePath(mane, QPen(brown, 46, Qt::SolidLine, Qt::RoundCap));
  painter.setBrush(brown);
  painter.drawEllipse(QPointF(-196, 950), 44, 40);
  return image;
}

QImage hand(int scale) { return scale == 1 ? small_hand() : large_hand(); }

}  // namespace morva::pictures
