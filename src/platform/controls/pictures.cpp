#include "platform/controls/pictures.h"

#include <QFrame>
#include <QPainter>

#include "platform/controls/native.h"
#include "platform/drawing/edge.h"
#include "platform/drawing/picture.h"
#include "platform/drawing/pixels.h"
#include "platform/drawing/qt_color.h"

namespace morva {

namespace {

constexpr int kFocusRing = 3;  // pixels, each of its two lines

// What a surface shows: its strokes, or a stored picture, inside its border.
class Canvas : public QFrame {
 public:
  Canvas(const PictureBox& box, const Surface& surface) : box_(box), surface_(surface) {
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
  }
  void Redraw() {
    if (changed_) return;
    changed_ = true;
    update();
  }
  QPixmap stored;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    const QRect inside = contentsRect();
    QPainter painter(this);
    if (inside != rect()) PaintEdge(painter, rect(), Edge::kSunken, palette());
    if (!stored.isNull()) {
      painter.setRenderHint(QPainter::SmoothPixmapTransform);
      painter.drawPixmap(inside, stored);
    } else {
      if (changed_ || picture_.devicePixelRatio() != devicePixelRatioF() || size_ != inside.size()) {
        size_ = inside.size();
        changed_ = false;
        picture_ =
            PictureOf(surface_.Strokes(), box_.BackColor(), inside.width(), inside.height(), devicePixelRatioF());
      }
      painter.drawPixmap(inside.topLeft(), picture_);
    }
    if (hasFocus()) PaintFocusRing(painter, rect(), kFocusRing, QtColor(box_.FocusColor()));
  }

 private:
  const PictureBox& box_;
  const Surface& surface_;
  QPixmap picture_;
  QSize size_;
  bool changed_ = true;
};

class ImageWidget : public QWidget {
 public:
  QPixmap stored;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect(), stored);
  }
};

class Disc : public QWidget {
 public:
  explicit Disc(const CircleShape& shape) : shape_(shape) {}

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QtColor(shape_.BorderColor()));
    painter.setBrush(QtColor(shape_.BackColor()));
    painter.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
  }

 private:
  const CircleShape& shape_;
};

class RuleWidget : public QWidget {
 public:
  explicit RuleWidget(const Rule& rule) : rule_(rule) {}

 protected:
  void paintEvent(QPaintEvent* /*event*/) override { QPainter(this).fillRect(rect(), QtColor(rule_.BorderColor())); }

 private:
  const Rule& rule_;
};

}  // namespace

PictureBox::PictureBox(Border border)
    : Control(std::make_unique<Canvas>(*this, *this)),
      BackColor(kButtonFace, [this] { As<Canvas>(*this).Redraw(); }),
      Picture({},
              [this] {
                auto& shown = As<Canvas>(*this);
                shown.stored = StoredPicture(Picture());
                const QSizeF size = shown.stored.deviceIndependentSize();
                const int frame = 2 * shown.frameWidth();
                Width = ToTwips(size.width() + frame);
                Height = ToTwips(size.height() + frame);
                shown.update();
              }),
      FocusColor(kWhite, [this] {
        if (HasFocus()) Native()->update();
      }) {
  auto& canvas = As<Canvas>(*this);
  if (border == Border::kSunken) {
    canvas.setFrameStyle(QFrame::WinPanel | QFrame::Sunken);
    canvas.setLineWidth(2);
  }
  drawn_ = [this] { As<Canvas>(*this).Redraw(); };
}

Image::Image()
    : Control(std::make_unique<ImageWidget>()), Picture({}, [this] {
        As<ImageWidget>(*this).stored = StoredPicture(Picture());
        Native()->update();
      }) {}

CircleShape::CircleShape()
    : Control(std::make_unique<Disc>(*this)),
      BackColor(kWhite, [this] { Native()->update(); }),
      BorderColor(kBlack, [this] { Native()->update(); }) {}

Rule::Rule()
    : Control(std::make_unique<RuleWidget>(*this)), BorderColor(kButtonShadow, [this] { Native()->update(); }) {}

}  // namespace morva
