#include "platform/controls/label.h"

#include <QLabel>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "platform/controls/pictures.h"
#include "platform/drawing/contrast.h"
#include "platform/drawing/desktop_colors.h"
#include "platform/drawing/edge.h"
#include "platform/drawing/fonts.h"
#include "platform/drawing/pixels.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

constexpr double kFocusMargin = 60;  // twips between the text and the focus ring

class FittingLabel : public QLabel {
 public:
  explicit FittingLabel(const Label& label) : label_(label) {}

  // The text is measured when it is painted, so that the caller need not wait for it.
  void Refit() {
    fits_ = false;
    update();
  }

  Color ShownColor() const { return Readable(Resolved(label_.ForeColor()), GroundBehind(), NeededContrast()); }

 protected:
  void resizeEvent(QResizeEvent* /*event*/) override { Refit(); }

  void paintEvent(QPaintEvent* /*event*/) override {
    if (label_.ReliefOf != nullptr) {
      const auto& words = As<FittingLabel>(*label_.ReliefOf);
      if (words.ShownColor() == Resolved(label_.ReliefOf->ForeColor())) DrawText(label_.ForeColor(), {});
      return;
    }
    const Color color = ShownColor();
    if (Contrast(color, GroundBehind()) < NeededContrast()) DrawHalo(color == kBlack ? kWhite : kBlack);
    DrawText(color, {});
    if (!hasFocus()) return;
    // The label can be much wider than its text.
    const int end = QFontMetrics(FittedFont()).horizontalAdvance(ShownText()) + 2 * ToPixels(kFocusMargin);
    QPainter painter(this);
    PaintFocusRing(painter, QRect(0, 0, std::min(end, SeenWidth()), height()), 1);
  }

 private:
  int Flags() const { return static_cast<int>(alignment()) | Qt::TextWordWrap; }

  const QFont& FittedFont() const {
    if (std::exchange(fits_, true)) return fitted_;
    constexpr int kSmallest = 5;  // pixels
    fitted_ = ProgramFont(label_.FontSize(), label_.FontBold());
    one_line_ = height() < 2 * QFontMetrics(fitted_).lineSpacing();
    if (one_line_) fitted_ = Fitted(fitted_, text(), width());
    while (!one_line_ && fitted_.pixelSize() > kSmallest && !Fits(fitted_))
      fitted_.setPixelSize(fitted_.pixelSize() - 1);
    return fitted_;
  }

  // The width that lies within the window: a label can be wider than that.
  int SeenWidth() const {
    int left = 0, seen = width();
    for (const QWidget* inside = this; !inside->isWindow(); inside = inside->parentWidget()) {
      left += inside->x();
      seen = std::min(seen, inside->parentWidget()->width() - left);
    }
    return seen;
  }

  // A line longer than that ends at the window's edge, with room for the focus ring.
  QString ShownText() const {
    if (label_.ReliefOf != nullptr) return As<FittingLabel>(*label_.ReliefOf).ShownText();
    const QFontMetrics metrics(FittedFont());
    const int seen = SeenWidth();
    if (!one_line_ || seen == width()) return text();
    return metrics.elidedText(text(), Qt::ElideRight, seen - 2 * ToPixels(kFocusMargin));
  }

  bool Fits(const QFont& font) const {
    return rect().contains(QFontMetrics(font).boundingRect(rect(), Flags(), text()));
  }

  double NeededContrast() const {
    const bool large = label_.FontBold() && label_.FontSize() >= 14;
    return large ? kReadableLarge : kReadable;
  }

  Ground GroundBehind() const {
    const QFontMetrics metrics(FittedFont());
    QRect ink = metrics.boundingRect(rect(), Flags(), ShownText()) & rect();
    ink.setTop(ink.top() + metrics.ascent() - metrics.capHeight());
    if (const auto* box = dynamic_cast<const PictureBox*>(ControlOf(parentWidget()))) {
      return box->GroundAt(ink.translated(pos()));
    }
    const Color face = Resolved(kButtonFace);
    return {face, face};
  }

  void DrawText(Color color, QPoint shift) {
    QPainter painter(this);
    painter.setFont(FittedFont());
    painter.setPen(QtColor(color));
    painter.drawText(rect().translated(shift), Flags(), ShownText());
  }

  // For backgrounds on which neither black nor white can be read.
  void DrawHalo(Color color) {
    for (int y = -1; y <= 1; ++y) {
      for (int x = -1; x <= 1; ++x) DrawText(color, {x, y});
    }
  }

  const Label& label_;
  mutable QFont fitted_;
  mutable bool fits_ = false, one_line_ = false;
};

}  // namespace

Label::Label()
    : Control(std::make_unique<FittingLabel>(*this)),
      Caption({},
              [this] {
                As<QLabel>(*this).setText(ShortText(Caption()));
                Refit();
              }),
      ForeColor(kButtonText, [this] { Native()->update(); }),
      FontBold(false, [this] { Refit(); }),
      FontSize(8.25, [this] { Refit(); }),
      TextAlignment(Alignment::kLeft, [this] {
        const bool centred = TextAlignment() == Alignment::kCenter;
        As<QLabel>(*this).setAlignment((centred ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignTop);
      }) {
  auto& label = As<QLabel>(*this);
  label.setTextFormat(Qt::PlainText);
  label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
  label.setWordWrap(true);
}

void Label::Rescale() {
  Control::Rescale();
  Refit();
}

void Label::Refit() {
  As<FittingLabel>(*this).Refit();
  SpokenMayChange();
}

}  // namespace morva
