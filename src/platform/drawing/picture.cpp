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

#include "platform/drawing/pixels.h"
#include "platform/drawing/qt_color.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

// Drawn without antialiasing at this many times the resolution and scaled down, neighbouring strokes leave no seams
// between them and edges come out smooth.
constexpr int kOversampling = 4;
// What is large already takes less of it, and needs it less.
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
  // Every pen lies on the middle of a pixel, so that a line one pixel wide fills a row of them, its ends included.
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

  QImage picture(size, QImage::Format_RGB32);
  for (int y = 0; y < size.height(); ++y) {
    auto* out = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < size.width(); ++x) {
      int red = 0, green = 0, blue = 0;
      for (int dy = 0; dy < oversampling; ++dy) {
        const auto* in = reinterpret_cast<const QRgb*>(large.constScanLine(y * oversampling + dy)) +
                         static_cast<std::ptrdiff_t>(x) * oversampling;
        for (int dx = 0; dx < oversampling; ++dx) {
          red += qRed(in[dx]);
          green += qGreen(in[dx]);
          blue += qBlue(in[dx]);
        }
      }
      const int samples = oversampling * oversampling;
      const int half = samples / 2;
      out[x] = qRgb((red + half) / samples, (green + half) / samples, (blue + half) / samples);
    }
  }
  picture.setDevicePixelRatio(key.scale);
  return picture;
}

// What is stored as plain pixels; nothing where it is stored otherwise. The toolkit's reader looks for plug-ins first,
// and takes its time over PNG: a fifteenth of the time until the first window is seen.
QImage PlainPicture(const QResource& stored) {
  const auto head = QByteArray::fromRawData(reinterpret_cast<const char*>(stored.data()), stored.size()).left(20);
  int width = 0, height = 0, pixels = 0;
  if (std::sscanf(head.constData(), "P6 %d %d 255%n", &width, &height, &pixels) != 2) return {};
  return {stored.data() + pixels + 1, width, height, 3 * qsizetype{width}, QImage::Format_RGB888};
}

}  // namespace

QPixmap PictureOf(const std::vector<Stroke>& strokes, Color background, int width, int height, double scale) {
  static QCache<Key, QPixmap> pictures(96);
  Key key{strokes, Resolved(background), width, height, scale, size_factor};
  for (Stroke& stroke : key.strokes) {
    stroke.color = Resolved(stroke.color);
    stroke.fill = Resolved(stroke.fill);
  }
  if (const QPixmap* known = pictures.object(key)) return *known;
  QPixmap picture = QPixmap::fromImage(Render(key));
  // A gradient's panel is larger than all pieces together and is painted once an activation.
  if (width * height <= 64 * 64 * size_factor * size_factor) pictures.insert(key, new QPixmap(picture));
  return picture;
}

QPixmap StoredPicture(const std::string& name, double scale) {
  const QString path = QtText(":/pictures/" + name);
  const QResource finer(path + "@2x");
  const bool fine = scale > 1 && finer.isValid();
  const QResource stored(fine ? finer.fileName() : path);
  QImage picture = PlainPicture(stored);
  if (picture.isNull()) {
    // Left to find out the format, Qt loads all its plug-ins for other ones.
    QImageReader reader(stored.fileName(), "png");
    reader.setAutoDetectImageFormat(false);
    picture = reader.read();
  }
  picture.setDevicePixelRatio(fine ? 2 : 1);
  return QPixmap::fromImage(picture);
}

double ScreenScale() { return size_factor * qApp->devicePixelRatio(); }

}  // namespace morva
