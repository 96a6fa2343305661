#include "platform/drawing/picture.h"

#include <QCache>
#include <QGuiApplication>
#include <QHash>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QResource>
#include <cmath>
#include <cstdio>

#include "platform/drawing/desktop_colors.h"
#include "platform/drawing/pixels.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

// Strokes are drawn without antialiasing at this many times the resolution and scaled down: no seams between
// neighbouring strokes, smooth edges.
constexpr int kOversampling = 4;
// Large pictures need less of it.
constexpr double kLarge = 2.5;
constexpr int kOversamplingLarge = 2;

struct Key {
  std::vector<Stroke> strokes;
  Color background;
  int width, height;
  double scale, factor;
  bool operator==(const Key&) const = default;
};

std::size_t qHash(const Key& key, std::size_t seed = 0) {
  seed = qHashMulti(seed, key.background, key.width, key.height, key.scale, key.factor);
  return qHashBits(key.strokes.data(), key.strokes.size() * sizeof(Stroke), seed);
}

void Draw(QPainter& painter, const Stroke& stroke) {
  constexpr double kPixel = 1.0 / kTwipsPerPixel;
  // Pens run along the middle of pixels, so that a line one pixel wide fills a row of them, both ends included.
  constexpr QPointF kMiddle(0.5, 0.5);
  const Qt::PenCapStyle cap = stroke.draw_width == 1 ? Qt::SquareCap : Qt::RoundCap;
  const QPointF first = QPointF(stroke.x1, stroke.y1) * kPixel + kMiddle;
  painter.setPen(QPen(QtColor(stroke.color), stroke.draw_width, Qt::SolidLine, cap, Qt::RoundJoin));
  if (stroke.kind == Stroke::Kind::kLine) {
    painter.drawLine(first, QPointF(stroke.x2, stroke.y2) * kPixel + kMiddle);
  } else {
    painter.setBrush(stroke.filled ? QBrush(QtColor(stroke.fill)) : QBrush(Qt::NoBrush));
    painter.drawEllipse(first, stroke.x2 * kPixel, stroke.x2 * kPixel);
  }
}

QImage Render(const Key& key) {
  const QSize size(static_cast<int>(std::ceil(key.width * key.scale)),
                   static_cast<int>(std::ceil(key.height * key.scale)));
  const double zoom = key.scale * key.factor;
  const int oversampling = zoom > kLarge ? kOversamplingLarge : kOversampling;
  const QRgb background = QtColor(key.background).rgb();
  QImage large(size * oversampling, QImage::Format_RGB32);
  large.fill(background);
  QPainter painter(&large);
  painter.scale(zoom * oversampling, zoom * oversampling);
  for (const Stroke& stroke : key.strokes) Draw(painter, stroke);
  painter.end();

  QImage picture = large.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  picture.setDevicePixelRatio(key.scale);
  return picture;
}

// A picture stored as plain pixels; none where it is stored otherwise. Qt's reader looks for plug-ins first and takes
// its time over PNG: a fifteenth of the time until the first window is seen.
QImage PlainPicture(const QResource& stored) {
  const auto head = QByteArray::fromRawData(reinterpret_cast<const char*>(stored.data()), stored.size()).left(20);
  int width = 0, height = 0, pixels = 0;
  if (std::sscanf(head.constData(), "P6 %d %d 255%n", &width, &height, &pixels) != 2) return {};
  return {stored.data() + pixels + 1, width, height, 3 * qsizetype{width}, QImage::Format_RGB888};
}

}  // namespace

QPixmap PictureOf(const std::vector<Stroke>& strokes, Color background, int width, int height, double scale) {
  static QCache<Key, QPixmap> pictures(96);
  Key key{strokes, Resolved(background), width, height, scale, zoom_factor};
  for (Stroke& stroke : key.strokes) {
    stroke.color = Resolved(stroke.color);
    stroke.fill = Resolved(stroke.fill);
  }
  if (const QPixmap* known = pictures.object(key)) return *known;
  QPixmap picture = QPixmap::fromImage(Render(key));
  // A gradient panel is larger than all pieces together and is painted once per activation.
  if (width * height <= 64 * 64 * zoom_factor * zoom_factor) pictures.insert(key, new QPixmap(picture));
  return picture;
}

QPixmap StoredPicture(const std::string& name, double scale) {
  const QString path = QtText(":/pictures/" + name);
  const QResource finer(path + "@2x");
  const bool fine = scale > 1 && finer.isValid();
  const QResource stored(fine ? finer.fileName() : path);
  QImage picture = PlainPicture(stored);
  if (picture.isNull()) {
    // To detect the format Qt would load all its image plug-ins.
    QImageReader reader(stored.fileName(), "png");
    reader.setAutoDetectImageFormat(false);
    picture = reader.read();
  }
  picture.setDevicePixelRatio(fine ? 2 : 1);
  return QPixmap::fromImage(picture);
}

double ScreenScale() { return zoom_factor * qApp->devicePixelRatio(); }

}  // namespace morva
