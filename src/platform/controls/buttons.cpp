#include "platform/controls/buttons.h"

#include <QButtonGroup>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "platform/controls/qt_keys.h"
#include "platform/drawing/edge.h"
#include "platform/drawing/fonts.h"
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

// Tab enters a group at the chosen button; the arrow keys walk through it in tab order, wherever the buttons stand.
class GroupedButton : public QRadioButton {
 public:
  void TakeTabStop() {
    if (group() == nullptr) return;
    const QList<QAbstractButton*> buttons = group()->buttons();
    for (QAbstractButton* button : buttons) button->setFocusPolicy(button == this ? Qt::StrongFocus : Qt::ClickFocus);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QStyleOptionButton option;
    initStyleOption(&option);
    QStylePainter painter(this);
    const QRect caption = style()->subElementRect(QStyle::SE_RadioButtonContents, &option, this);
    painter.setFont(Fitted(font(), text(), caption.width()));
    painter.drawControl(QStyle::CE_RadioButton, option);
    if (!hasFocus()) return;
    PaintFocusRing(painter, style()->subElementRect(QStyle::SE_RadioButtonFocusRect, &option, this), 1);
  }

  void keyPressEvent(QKeyEvent* event) override {
    // On some desktops Enter would press this button; here it belongs to the default button.
    if (IsEnter(*event)) return event->ignore();
    const bool forward = event->key() == Qt::Key_Down || event->key() == Qt::Key_Right;
    if (!forward && event->key() != Qt::Key_Up && event->key() != Qt::Key_Left) {
      return QRadioButton::keyPressEvent(event);
    }
    const QList<QAbstractButton*> buttons = group()->buttons();
    QWidget* next = this;
    do {
      next = forward ? next->nextInFocusChain() : next->previousInFocusChain();
    } while (!buttons.contains(next));
    static_cast<QRadioButton*>(next)->setChecked(true);
    next->setFocus(Qt::TabFocusReason);
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

OptionButton::OptionButton()
    : Control(std::make_unique<GroupedButton>()),
      Caption({}, [this] { As<QRadioButton>(*this).setText(QtText(Caption())); }),
      Value(false, [this] { As<QRadioButton>(*this).setChecked(Value()); }) {
  Kind = SpokenKind::kOption;
  QObject::connect(&As<QRadioButton>(*this), &QRadioButton::toggled, [this](bool on) {
    Store(Value, on);
    if (!on) return;
    As<GroupedButton>(*this).TakeTabStop();
    if (Click) Click();
  });
}

// Qt's own grouping would include the buttons of inner containers.
void OptionButton::PlaceOn(QWidget* parent, double left, double top, double width, double height) {
  Control::PlaceOn(parent, left, top, width, height);
  auto* group = parent->findChild<QButtonGroup*>(QString(), Qt::FindDirectChildrenOnly);
  if (group == nullptr) group = new QButtonGroup(parent);
  group->addButton(&As<QRadioButton>(*this));
}

}  // namespace morva
