// Draws the pictures that the program carries: make_pictures OUTDIR.
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <cstdio>

#include "pictures_render.h"
#include "pictures_shapes.h"
#include "pictures_small.h"

namespace morva::pictures {
namespace {

constexpr int kSamples = 40;

const QColor kCream(0xf2, 0xe4, 0xc6);

struct Set {
  Field king{king_profile()}, cross{king_cross()}, foot{knight_foot()}, head{knight_head()},
      lines{knight_lines(), false}, checker{checker_profile()};
  Form king_form{&king, &cross, nullptr, 0.05f, 0, 0.03f};
  Form knight_form{&foot, &head, &lines, 0.25f, 0.08f, 0.13f};
  Form checker_form{&checker};
  Material white{linear(0xf4e6c8), 0.35f, 40}, black{linear(0x2b211b), 0.5f, 50};
};

QImage splash_scene(const Set& set) {
  Scene scene;
  scene.pieces = {
      {set.knight_form, set.white, {1.5f, 0, 0.5f}, 0.3f}, {set.king_form, set.black, {2.5f, 0, -1.5f}, 0.3f},
      {set.checker_form, set.black, {-0.5f, 0, 0.5f}},     {set.checker_form, set.white, {-0.46f, 0.19f, 0.48f}},
      {set.checker_form, set.black, {0.5f, 0, -2.5f}},
  };
  scene.eye = {0.60f, 1.25f, 5.3f};
  scene.target = {0.60f, 0.80f, 0};
  scene.angle = 0.455f;
  scene.focus = 4.8f;
  scene.lens = 0.05f;
  scene.lamp = {-4.0f, 4.5f, 0.6f};
  scene.lamp_colour = {52, 42, 29};
  scene.lamp_aim = {0.3f, 0, 0.2f};
  scene.pool = 2.6f;
  scene.rim = {0.9f, 0.7f, 0.48f};
  scene.glow = {0.060f, 0.036f, 0.018f};
  scene.glow_at = {2.6f, 0.9f, -6};
  scene.glow_width = 0.2f;
  return render(scene, 600, 400, kSamples);
}

QImage portrait_scene(const Set& set) {
  Scene scene;
  scene.pieces = {{set.king_form, set.white, {0, 0, 0}, 0.5f}};
  scene.eye = {0, 1.20f, 5};
  scene.target = {0, 1.15f, 0};
  scene.angle = 0.285f;
  scene.focus = 5;
  scene.lamp = {-3.6f, 3.6f, 2.0f};
  scene.lamp_colour = {34, 28.5f, 21};
  scene.pool = 3;
  scene.sky = {0.030f, 0.025f, 0.021f};
  scene.rim = {1.1f, 0.85f, 0.55f};
  scene.glow = {0.13f, 0.080f, 0.042f};
  scene.glow_at = {0.9f, 0.8f, -6};
  scene.glow_width = 0.11f;
  return render(scene, 190, 234, kSamples);
}

QImage icon_scene(const Set& set, int size) {
  Scene scene;
  scene.pieces = {{set.knight_form, set.white, {0, 0, 0}, 0.3f}, {set.checker_form, set.black, {0.68f, 0, 0.42f}}};
  scene.board_shift_x = 0.45f;
  scene.board_shift_z = 0.4f;
  scene.eye = {0.26f, 2.3f, 5.2f};
  scene.target = {0.26f, 0.57f, 0};
  scene.angle = 0.33f;
  scene.focus = 7;
  scene.lamp = {-2.6f, 4.2f, 2.4f};
  scene.lamp_colour = {42, 35, 26};
  scene.lamp_aim = {0, 0, 0.5f};
  scene.rim = {1.6f, 1.3f, 0.95f};
  scene.haze = {0.10f, 0.060f, 0.030f};
  return render(scene, size, size, kSamples);
}

QImage smaller(const QImage& image, int width, int height) {
  return image.scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage splash(const QImage& scene, int scale) {
  QImage image = smaller(scene, 300 * scale, 200 * scale);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(scale, scale);
  painter.translate(23, 64);
  painter.scale(0.05, 0.05);
  QLinearGradient sheen(0, -720, 0, 0);
  sheen.setColorAt(0, kCream);
  sheen.setColorAt(1, QColor(0xd9c29a));
  painter.fillPath(morva_letters(), sheen);
  return image;
}

// The sitter in an oval, on a dark mat with a thin gilt edge.
QImage portrait(const QImage& scene, int scale) {
  QImage image = smaller(scene, 95 * scale, 117 * scale);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(scale, scale);
  const QRectF oval(5.5, 5.5, 84, 106);
  QPainterPath mat;
  mat.addRect(0, 0, 95, 117);
  mat.addEllipse(oval);
  QLinearGradient felt(0, 0, 95, 117);
  felt.setColorAt(0, QColor(0x4a3422));
  felt.setColorAt(1, QColor(0x2c1d11));
  painter.fillPath(mat, felt);
  QLinearGradient gilt(0, 0, 95, 117);
  gilt.setColorAt(0, QColor(0xe9d3a2));
  gilt.setColorAt(0.5, QColor(0x9a7a4a));
  gilt.setColorAt(1, QColor(0xd2b888));
  painter.setPen(QPen(QBrush(gilt), 1.4));
  painter.drawEllipse(oval);
  return image;
}

QImage icon(const Set& set, int size) {
  if (size <= 32) return small_icon(size);
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath tile;
  tile.addRoundedRect(QRectF(0.5, 0.5, size - 1, size - 1), size * 0.17, size * 0.17);
  painter.setPen(QPen(QColor(0x24170d), 1));
  painter.setBrush(QBrush(icon_scene(set, size)));
  painter.drawPath(tile);
  return image;
}

int make(const QDir& folder) {
  const auto save = [&](const QImage& image, const QString& name) {
    const QString path = folder.filePath(name);
    if (image.save(path)) return true;
    std::fprintf(stderr, "make_pictures: cannot write %s\n", qPrintable(path));
    return false;
  };
  const Set set;
  bool good = true;
  const QImage table = splash_scene(set), sitter = portrait_scene(set);
  for (const int scale : {1, 2}) {
    const QString finer = scale == 1 ? "" : "@2x";
    good = save(splash(table, scale), "splash" + finer + ".ppm") && good;
    good = save(portrait(sitter, scale), "portrait" + finer + ".ppm") && good;
    good = save(hand(scale), "hand" + finer + ".png") && good;
  }
  for (const int size : {16, 24, 32, 48, 64, 128, 256})
    good = save(icon(set, size), QString("icon-%1.png").arg(size)) && good;
  return good ? 0 : 1;
}

}  // namespace
}  // namespace morva::pictures

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_pictures OUTDIR\n");
    return 2;
  }
  const QDir folder(QString::fromLocal8Bit(argv[1]));
  if (!folder.mkpath(".")) {
    std::fprintf(stderr, "make_pictures: cannot make %s\n", argv[1]);
    return 1;
  }
  return morva::pictures::make(folder);
}
