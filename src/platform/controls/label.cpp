#include "platform/controls/label.h"

#include <QLabel>
#include <QPainter>
#include <algorithm>

#include "platform/controls/native.h"
#include "platform/drawing/edge.h"
#include "platform/drawing/fonts.h"
#include "platform/drawing/qt_color.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

constexpr int kFocusMargin = 4;  // pixels between the text and the ring that marks the focus

// A label whose one line is set narrower where it would be cut off.
class FittingLabel : public QLabel {
 public:
  void Fit(const QFont& wanted) {
    constexpr int kNarrowest = 75;  // per cent
    wanted_ = wanted;
    const QFontMetrics metrics(wanted);
    const int needed = metrics.horizontalAdvance(text());
    const bool one_line = height() < 2 * metrics.lineSpacing();
    QFont fitted = wanted;
    if (one_line && needed > width() && width() > 0) fitted.setStretch(std::max(kNarrowest, 99 * width() / needed));
    if (fitted != font()) setFont(fitted);
  }

 protected:
  void resizeEvent(QResizeEvent* /*event*/) override { Fit(wanted_); }
  // The label can be much wider than its text, and than its window.
  void paintEvent(QPaintEvent* event) override {
    QLabel::paintEvent(event);
    if (!hasFocus()) return;
    const QRect ring(0, 0, fontMetrics().horizontalAdvance(text()) + 2 * kFocusMargin, height());
    QPainter painter(this);
    PaintFocusRing(painter, ring & visibleRegion().boundingRect(), 1);
  }

 private:
  QFont wanted_ = ProgramFont();
};

}  // namespace

Label::Label()
    : Control(std::make_unique<FittingLabel>()),
      Caption({},
              [this] {
                As<QLabel>(*this).setText(QtText(Caption()));
                SetFont();
              }),
      ForeColor(kButtonText, [this] { Tint(); }),
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
  Tint();
}

void Label::SetFont() { As<FittingLabel>(*this).Fit(ProgramFont(FontSize(), FontBold())); }

void Label::Tint() {
  QPalette palette = Native()->palette();
  if (palette.color(QPalette::WindowText) == QtColor(ForeColor())) return;
  palette.setColor(QPalette::WindowText, QtColor(ForeColor()));
  Native()->setPalette(palette);
}

}  // namespace morva
