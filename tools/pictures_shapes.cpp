#include "pictures_shapes.h"

#include <QTransform>
#include <array>
#include <initializer_list>

namespace morva::pictures {
namespace {

QPainterPath polygon(std::initializer_list<QPointF> points) {
  QPainterPath path;
  path.addPolygon(QPolygonF(QList<QPointF>(points)));
  path.closeSubpath();
  return path;
}

QPainterPath both_halves(const QPainterPath& half) {
  return half.united(QTransform::fromScale(-1, 1).map(half)).simplified();
}

void add_ring(QPainterPath& half, double radius, double y, double thickness) {
  QPainterPath ring;
  ring.addRoundedRect(QRectF(-10, y - thickness / 2, radius + 10, thickness), thickness / 2, thickness / 2);
  half = half.united(ring);
}

// A serif with hollow brackets, from `left` to `right` on the line `y`, holding a stem; `rise` is upwards when
// positive.
QPainterPath serif(double left, double right, double stem_left, double stem_right, double y, double rise) {
  const double thin = rise > 0 ? 24 : -24;
  QPainterPath path(QPointF(left, y));
  path.lineTo(right, y);
  path.lineTo(right, y + thin);
  path.quadTo(stem_right, y + thin + rise * 0.12, stem_right, y + rise);
  path.lineTo(stem_left, y + rise);
  path.quadTo(stem_left, y + thin + rise * 0.12, left, y + thin);
  path.closeSubpath();
  return path;
}

QPainterPath letter_m() {
  QPainterPath m = polygon({{104, 0}, {140, 0}, {140, 700}, {104, 720}});
  m = m.united(polygon({{100, 720}, {206, 720}, {470, 95}, {434, 0}, {404, 0}}));
  m = m.united(polygon({{404, 0}, {434, 0}, {722, 720}, {690, 720}}));
  m = m.united(polygon({{688, 0}, {788, 0}, {788, 720}, {688, 720}}));
  m = m.united(serif(34, 210, 104, 140, 0, 70));
  m = m.united(serif(618, 858, 688, 788, 0, 70));
  m = m.united(polygon({{20, 720}, {160, 720}, {160, 640}, {112, 690}, {20, 696}}));
  return m.united(polygon({{760, 720}, {858, 720}, {858, 696}, {786, 690}, {760, 600}}));
}

QPainterPath letter_o() {
  QPainterPath outer, inner;
  outer.addEllipse(QPointF(258, 248), 250, 260);
  inner.addEllipse(QPointF(0, 0), 152, 228);
  return outer.subtracted(QTransform().translate(258, 248).rotate(10).map(inner));
}

QPainterPath letter_r() {
  QPainterPath r = polygon({{78, 0}, {168, 0}, {168, 508}, {150, 508}, {78, 470}});
  r = r.united(polygon({{10, 462}, {78, 478}, {152, 508}, {168, 508}, {168, 420}, {78, 420}, {70, 440}, {10, 444}}));
  r = r.united(serif(10, 250, 78, 168, 0, 62));
  QPainterPath ear(QPointF(156, 300));
  ear.cubicTo(172, 420, 232, 508, 312, 508);
  ear.cubicTo(362, 508, 390, 478, 388, 444);
  ear.cubicTo(386, 410, 358, 390, 330, 394);
  ear.cubicTo(296, 400, 292, 436, 262, 432);
  ear.cubicTo(214, 424, 176, 360, 166, 260);
  ear.closeSubpath();
  return r.united(ear);
}

QPainterPath letter_v() {
  QPainterPath v = polygon({{62, 498}, {166, 498}, {302, 130}, {274, -10}, {248, -10}});
  v = v.united(polygon({{248, -10}, {276, -10}, {456, 498}, {420, 498}}));
  v = v.united(serif(4, 226, 66, 160, 498, -48));
  return v.united(serif(352, 520, 414, 452, 498, -48));
}

QPainterPath letter_a() {
  QPainterPath stem(QPointF(62, 396));
  stem.cubicTo(74, 466, 140, 508, 218, 508);
  stem.cubicTo(326, 508, 378, 446, 378, 336);
  stem.lineTo(378, 104);
  stem.cubicTo(378, 62, 392, 46, 414, 46);
  stem.cubicTo(432, 46, 446, 54, 458, 66);
  stem.lineTo(468, 52);
  stem.cubicTo(448, 14, 412, -10, 370, -10);
  stem.cubicTo(320, -10, 290, 24, 288, 82);
  stem.lineTo(288, 330);
  stem.cubicTo(288, 424, 264, 478, 204, 478);
  stem.cubicTo(166, 478, 146, 452, 150, 400);
  stem.closeSubpath();
  QPainterPath ball;
  ball.addEllipse(QPointF(106, 394), 46, 46);
  QPainterPath bowl(QPointF(300, 312));
  bowl.cubicTo(200, 276, 28, 246, 28, 112);
  bowl.cubicTo(28, 38, 78, -10, 150, -10);
  bowl.cubicTo(214, -10, 266, 24, 298, 84);
  bowl.lineTo(292, 112);
  bowl.cubicTo(270, 66, 234, 44, 196, 44);
  bowl.cubicTo(152, 44, 122, 74, 122, 126);
  bowl.cubicTo(122, 208, 200, 250, 300, 284);
  bowl.closeSubpath();
  return stem.united(ball).united(bowl);
}

}  // namespace

QPainterPath king_profile() {
  QPainterPath half(QPointF(-10, 0));
  half.lineTo(360, 0);
  half.cubicTo(392, 0, 396, 60, 384, 92);
  half.cubicTo(376, 112, 350, 118, 340, 128);
  half.cubicTo(336, 190, 300, 210, 276, 236);
  half.cubicTo(216, 300, 178, 420, 160, 620);
  half.cubicTo(152, 720, 148, 800, 150, 880);
  half.lineTo(150, 980);
  half.cubicTo(160, 1100, 226, 1190, 246, 1300);
  half.cubicTo(240, 1326, 214, 1330, 206, 1334);
  half.cubicTo(170, 1390, 110, 1420, 58, 1430);
  half.lineTo(52, 1462);
  half.lineTo(-10, 1462);
  half.closeSubpath();
  add_ring(half, 350, 132, 40);
  add_ring(half, 306, 212, 34);
  add_ring(half, 250, 890, 62);
  add_ring(half, 212, 950, 44);
  add_ring(half, 184, 996, 36);
  add_ring(half, 256, 1298, 40);
  add_ring(half, 76, 1452, 40);
  return both_halves(half);
}

QPainterPath king_cross() {
  QPainterPath cross(QPointF(-34, 1440));
  cross.lineTo(-24, 1520);
  cross.lineTo(-92, 1502);
  cross.lineTo(-92, 1612);
  cross.lineTo(-24, 1592);
  cross.lineTo(-46, 1676);
  cross.lineTo(46, 1676);
  cross.lineTo(24, 1592);
  cross.lineTo(92, 1612);
  cross.lineTo(92, 1502);
  cross.lineTo(24, 1520);
  cross.lineTo(34, 1440);
  cross.closeSubpath();
  return cross;
}

QPainterPath knight_foot() {
  QPainterPath half(QPointF(-10, 0));
  half.lineTo(350, 0);
  half.cubicTo(382, 0, 386, 60, 374, 88);
  half.cubicTo(366, 108, 344, 112, 334, 124);
  half.cubicTo(326, 180, 296, 196, 284, 216);
  half.lineTo(270, 262);
  half.lineTo(-10, 262);
  half.closeSubpath();
  add_ring(half, 342, 130, 40);
  add_ring(half, 300, 214, 44);
  return both_halves(half);
}

QPainterPath knight_head() {
  QPainterPath head(QPointF(-250, 90));
  head.lineTo(-250, 230);
  head.cubicTo(-272, 400, -190, 520, -96, 640);
  head.cubicTo(-78, 664, -76, 684, -88, 700);        // throat
  head.cubicTo(-146, 694, -196, 640, -240, 604);     // jaw
  head.cubicTo(-276, 580, -330, 582, -352, 606);     // chin
  head.cubicTo(-366, 622, -372, 650, -376, 668);     // lips
  head.cubicTo(-418, 696, -432, 750, -410, 802);     // muzzle
  head.cubicTo(-366, 900, -300, 980, -232, 1096);    // bridge of the nose
  head.cubicTo(-226, 1150, -208, 1216, -160, 1296);  // ear
  head.cubicTo(-126, 1262, -104, 1234, -84, 1196);
  head.cubicTo(120, 1172, 276, 980, 298, 740);  // crest
  head.cubicTo(314, 560, 280, 400, 258, 230);
  head.lineTo(258, 90);
  head.closeSubpath();
  return head;
}

QPainterPath knight_lines() {
  QPainterPath lines(QPointF(-338, 668));  // mouth
  lines.cubicTo(-310, 684, -270, 688, -226, 664);
  lines.moveTo(-384, 758);  // nostril
  lines.cubicTo(-372, 786, -352, 788, -342, 770);
  lines.moveTo(-88, 700);  // cheek
  lines.cubicTo(-14, 766, -6, 870, -66, 946);
  lines.moveTo(-250, 944);  // eye
  lines.cubicTo(-226, 994, -188, 1000, -154, 974);
  lines.cubicTo(-184, 950, -216, 938, -250, 944);
  lines.moveTo(-70, 1190);  // edge of the mane and its locks
  lines.cubicTo(70, 1080, 142, 910, 142, 730);
  lines.cubicTo(142, 560, 100, 420, 84, 100);
  for (const auto& [x0, y0, x1, y1] : {std::array<double, 4>{22, 1106, 150, 1130},
                                       {92, 1010, 246, 984},
                                       {132, 886, 300, 812},
                                       {142, 750, 320, 640},
                                       {130, 610, 310, 480},
                                       {108, 470, 290, 330}}) {
    lines.moveTo(x0, y0);
    lines.quadTo((x0 + x1) / 2 + 10, (y0 + y1) / 2 + 34, x1, y1);
  }
  return lines;
}

QPainterPath checker_profile() {
  QPainterPath half;
  half.addRoundedRect(QRectF(-450, 0, 900, 190), 46, 46);
  QPainterPath groove;
  groove.addEllipse(QPointF(300, 196), 26, 22);
  groove.addEllipse(QPointF(-300, 196), 26, 22);
  groove.addEllipse(QPointF(210, 196), 18, 16);
  groove.addEllipse(QPointF(-210, 196), 18, 16);
  groove.addEllipse(QPointF(456, 95), 16, 22);
  groove.addEllipse(QPointF(-456, 95), 16, 22);
  return half.subtracted(groove);
}

QPainterPath morva_letters() {
  QPainterPath word;
  double x = 0;
  const auto set = [&](const QPainterPath& letter, double gap) {
    word.addPath(QTransform::fromScale(1, -1).map(QTransform::fromTranslate(x, 0).map(letter)));
    x += gap;
  };
  set(letter_m(), 910);
  set(letter_o(), 560);
  set(letter_r(), 410);
  set(letter_v(), 530);
  set(letter_a(), 500);
  return word;
}

}  // namespace morva::pictures
