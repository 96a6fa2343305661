#include "platform/controls/label.h"

#include <QLabel>
#include <QPainter>
#include <algorithm>

#include "platform/controls/native.h"
#include "platform/controls/pictures.h"
#include "platform/drawing/edge.h"
#include "platform/drawing/fonts.h"
#include "platform/drawing/pixels.h"
#include "platform/drawing/qt_color.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

constexpr double kFocusMargin = 60;  // twips between the text and the ring that marks the focus

class FittingLabel : public QLabel {
 public:
  explicit FittingLabel(const Label& label) : label_(label) {}

  void Fit(const QFont& wanted) {
    constexpr int kSmallest = 5;  // pixels
    wanted_ = wanted;
    const bool one_line = height() < 2 * QFontMetrics(wanted).lineSpacing();
    QFont fitted = one_line ? Fitted(wanted, text(), width()) : wanted;
    while (!one_line && fitted.pixelSize() > kSmallest && !Fits(fitted)) fitted.setPixelSize(fitted.pixelSize() - 1);
    if (fitted != font()) setFont(fitted);
  }

  Color ShownColor() const { return Readable(Resolved(label_.ForeColor()), GroundBehind(), NeededContrast()); }

 protected:
  void resizeEvent(QResizeEvent* /*event*/) override { Fit(wanted_); }

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
    // The label can be much wider than its text, and than its window.
    const QRect ring(0, 0, fontMetrics().horizontalAdvance(text()) + 2 * ToPixels(kFocusMargin), height());
    QPainter painter(this);
    PaintFocusRing(painter, ring & visibleRegion().boundingRect(), 1);
  }

 private:
  int Flags() const { return static_cast<int>(alignment()) | Qt::TextWordWrap; }

  bool Fits(const QFont& font) const {
    return rect().contains(QFontMetrics(font).boundingRect(rect(), Flags(), text()));
  }

  double NeededContrast() const {
    const bool large = label_.FontBold() && label_.FontSize() >= 14;
    return large ? kReadableLarge : kReadable;
  }

  Ground GroundBehind() const {
    const QFontMetrics metrics(font());
    QRect ink = metrics.boundingRect(rect(), Flags(), text()) & rect();
    ink.setTop(ink.top() + metrics.ascent() - metrics.capHeight());
    if (const auto* box = dynamic_cast<const PictureBox*>(ControlOf(parentWidget()))) {
      return box->GroundAt(ink.translated(pos()));
    }
    const Color face = GetSysColor(15);
    return {face, face};
  }

  void DrawText(Color color, QPoint shift) {
    QPainter painter(this);
    painter.setPen(QtColor(color));
    painter.drawText(rect().translated(shift), Flags(), text());
  }

  // Where neither black nor white is read on all that stands behind.
  void DrawHalo(Color color) {
    for (int y = -1; y <= 1; ++y) {
      for (int x = -1; x <= 1; ++x) DrawText(color, {x, y});
    }
  }

  const Label& label_;
  QFont wanted_ = ProgramFont();
};

}  // namespace

Label::Label()
    : Control(std::make_unique<FittingLabel>(*this)),
      Caption({},
              [this] {
                As<QLabel>(*this).setText(ShortText(Caption()));
                SetFont();
              }),
      ForeColor(kButtonText, [this] { Native()->update(); }),
      FontBold(false, [this] { SetFont(); }),
      FontSize(8.25, [this] { SetFont(); }),
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
  SetFont();
}

void Label::SetFont() {
  As<FittingLabel>(*this).Fit(ProgramFont(FontSize(), FontBold()));
  SpokenMayChange();
}

}  // namespace morva
