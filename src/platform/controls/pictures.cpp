#include "platform/controls/pictures.h"

#include <QEvent>
#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

#include "platform/drawing/contrast.h"
#include "platform/drawing/desktop_colors.h"
#include "platform/drawing/edge.h"
#include "platform/drawing/picture.h"
#include "platform/drawing/pixels.h"

namespace morva {

namespace {

constexpr double kFocusRing = 45;  // twips, each of its two lines
constexpr double kMarkRing = 15;

// The nearest place whose edges lie between device pixels, at whatever scale. Places of one size stay alike.
QRectF Snapped(const QPainter& painter, const QRectF& place) {
  const QTransform screen = painter.deviceTransform();
  const QRectF pixels = screen.mapRect(place);
  return screen.inverted().mapRect(QRectF(pixels.topLeft().toPoint(), pixels.size().toSize()));
}

// The largest square of whole device pixels within the place, at its upper left.
QRectF SquareWithin(const QPainter& painter, const QRectF& place) {
  const QTransform screen = painter.deviceTransform();
  const QRectF pixels = screen.mapRect(place);
  const QPointF corner(std::ceil(pixels.left()), std::ceil(pixels.top()));
  const double side = std::floor(std::min(pixels.right() - corner.x(), pixels.bottom() - corner.y()));
  return screen.inverted().mapRect(QRectF(corner, QSizeF(side, side)));
}

void PaintStored(QPainter& painter, const QRect& place, const QPixmap& stored) {
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawPixmap(Snapped(painter, place), stored, stored.rect());
}

// What a surface shows: its strokes, or a stored picture, inside its border.
class Canvas : public QWidget {
 public:
  explicit Canvas(PictureBox& box) : box_(box) {
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
  }
  void Redraw() {
    box_.SpokenMayChange();
    if (changed_) return;
    changed_ = true;
    update();
  }
  const QPixmap& Drawn() {
    const QSize size = contentsRect().size();
    if (changed_ || drawn_.devicePixelRatio() != devicePixelRatioF() || size_ != size) {
      size_ = size;
      changed_ = false;
      drawn_ = PictureOf(box_.Strokes(), box_.BackColor(), size.width(), size.height(), devicePixelRatioF());
    }
    return drawn_;
  }
  QPixmap stored;

 protected:
  void changeEvent(QEvent* event) override {
    if (event->type() == QEvent::PaletteChange) Redraw();
    QWidget::changeEvent(event);
  }

  void paintEvent(QPaintEvent* /*event*/) override {
    const QRect inside = contentsRect();
    QPainter painter(this);
    if (inside != rect()) PaintEdge(painter, rect(), Edge::kSunken, palette());
    if (!stored.isNull()) {
      PaintStored(painter, inside, stored);
    } else {
      painter.drawPixmap(inside.topLeft(), Drawn());
    }
    const bool ring = hasFocus() || box_.Marked();
    const double width = hasFocus() ? kFocusRing : kMarkRing;
    if (ring) PaintFocusRing(painter, rect(), ToPixels(width), QtColor(box_.FocusColor()));
  }

 private:
  PictureBox& box_;
  QPixmap drawn_;
  QSize size_;
  bool changed_ = true;
};

class Painted : public QWidget {
 public:
  std::function<void(QPainter& painter, const QRect& place)> paint;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    if (paint) paint(painter, rect());
  }
};

}  // namespace

PictureBox::PictureBox(Border border)
    : Control(std::make_unique<Canvas>(*this)),
      BackColor(kButtonFace, [this] { As<Canvas>(*this).Redraw(); }),
      Picture({},
              [this] {
                auto& shown = As<Canvas>(*this);
                shown.stored = StoredPicture(Picture());
                const QSizeF size = shown.stored.deviceIndependentSize();
                const int frame = sunken_ ? 4 : 0;
                Width = (size.width() + frame) * kTwipsPerPixel;
                Height = (size.height() + frame) * kTwipsPerPixel;
                shown.update();
              }),
      FocusColor(kWhite,
                 [this] {
                   if (HasFocus()) Native()->update();
                 }),
      Marked(false, [this] { Native()->update(); }),
      sunken_(border == Border::kSunken) {
  Kind = SpokenKind::kContainer;
  LayBorder();
  drawn_ = [this] { As<Canvas>(*this).Redraw(); };
}

void PictureBox::LayBorder() {
  const int width = sunken_ ? EdgeWidth() : 0;
  Native()->setContentsMargins(width, width, width, width);
}

void PictureBox::Rescale() {
  Control::Rescale();
  LayBorder();
  auto& canvas = As<Canvas>(*this);
  if (!canvas.stored.isNull()) canvas.stored = StoredPicture(Picture());
  canvas.Redraw();
}

Ground PictureBox::GroundAt(const QRect& place) const {
  auto& canvas = As<Canvas>(*this);
  const double scale = canvas.devicePixelRatioF();
  const QRectF inside(place.translated(-canvas.contentsRect().topLeft()));
  const QImage picture = canvas.Drawn().toImage();
  const QRect seen = QRectF(inside.topLeft() * scale, inside.size() * scale).toRect() & picture.rect();
  std::optional<Ground> ground;
  for (int y = seen.top(); y <= seen.bottom(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
    // One line of a shaded panel is often one colour.
    QRgb before = 0;
    for (int x = seen.left(); x <= seen.right(); ++x) {
      if (line[x] == before) continue;
      before = line[x];
      const Color color = ColorOf(before);
      ground = ground ? With(*ground, color) : Ground{color, color};
    }
  }
  const Color back = Resolved(BackColor());
  return ground.value_or(Ground{back, back});
}

Image::Image()
    : Control(std::make_unique<Painted>()), Picture({}, [this] {
        As<Painted>(*this).paint = [stored = StoredPicture(Picture())](QPainter& painter, const QRect& place) {
          PaintStored(painter, place, stored);
        };
        Native()->update();
      }) {
  Kind = SpokenKind::kNothing;
}

void Image::Rescale() {
  Control::Rescale();
  Picture = Picture();
}

CircleShape::CircleShape()
    : Control(std::make_unique<Painted>()),
      BackColor(kWhite, [this] { Native()->update(); }),
      BorderColor(kBlack, [this] { Native()->update(); }) {
  Kind = SpokenKind::kNothing;
  As<Painted>(*this).paint = [this](QPainter& painter, const QRect& place) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF whole = SquareWithin(painter, place);
    painter.setBrush(QtColor(BorderColor()));
    painter.drawEllipse(whole);
    painter.setBrush(QtColor(BackColor()));
    const double border = std::max(1.0, zoom_factor);
    painter.drawEllipse(whole.adjusted(border, border, -border, -border));
  };
}

Rule::Rule() : Control(std::make_unique<Painted>()), BorderColor(kButtonShadow, [this] { Native()->update(); }) {
  Kind = SpokenKind::kNothing;
  As<Painted>(*this).paint = [this](QPainter& painter, const QRect& place) {
    painter.fillRect(place, QtColor(BorderColor()));
  };
}

}  // namespace morva
