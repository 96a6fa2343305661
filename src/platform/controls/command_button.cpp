#include "platform/controls/command_button.h"

#include <QPushButton>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "platform/drawing/edge.h"
#include "platform/drawing/pixels.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

constexpr double kSmall = 300;  // twips: a lower button has its focus ring at its very edge

class WrappingButton : public QPushButton {
 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QString caption = option.text;
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    const int pushed = option.state.testFlag(QStyle::State_Sunken) ? 1 : 0;
    painter.drawText(rect().translated(pushed, pushed), Qt::AlignCenter | Qt::TextWordWrap | Qt::TextShowMnemonic,
                     caption);
    const int margin = height() < ToPixels(kSmall) ? 0 : 3;
    if (hasFocus()) PaintFocusRing(painter, rect().adjusted(margin, margin, -margin, -margin), 1);
  }
};

}  // namespace

CommandButton::CommandButton()
    : Control(std::make_unique<WrappingButton>()),
      Caption({}, [this] { As<QPushButton>(*this).setText(QtText(Caption())); }) {
  Kind = SpokenKind::kButton;
  QObject::connect(&As<QPushButton>(*this), &QPushButton::clicked, [this] {
    if (Click) Click();
  });
}

}  // namespace morva
