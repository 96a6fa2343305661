#include "platform/accessibility/spoken_controls.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

#include "platform/accessibility/spoken_line.h"
#include "platform/controls/command_button.h"
#include "platform/controls/control_group.h"
#include "platform/controls/frame.h"
#include "platform/controls/label.h"
#include "platform/controls/option_button.h"
#include "platform/controls/pictures.h"
#include "platform/controls/text_box.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

// The control whose widget this is; none for the widgets inside one.
Control* ControlAt(const QWidget& widget) {
  Control* control = ControlOf(&widget);
  return control != nullptr && control->Native() == &widget ? control : nullptr;
}

bool IsDecoration(const Control& control) {
  const bool picture = dynamic_cast<const PictureBox*>(&control) != nullptr;
  return control.Decoration || (picture && !control.Spoken && control.Native()->children().isEmpty());
}

bool IsSeen(const QWidget& widget) {
  const QWidget& parent = *widget.parentWidget();
  if (widget.isHidden() || !parent.rect().intersects(widget.geometry())) return false;
  const QObjectList& siblings = parent.children();  // from the back to the front
  return std::none_of(siblings.begin() + siblings.indexOf(&widget) + 1, siblings.end(), [&](const QObject* front) {
    const auto* cover = qobject_cast<const QWidget*>(front);
    return cover != nullptr && !cover->isHidden() && cover->geometry().contains(widget.geometry());
  });
}

bool StandsIn(const QWidget& widget) {
  const Control* control = ControlAt(widget);
  if (control == nullptr || control->Group() != nullptr || IsDecoration(*control)) return false;
  return dynamic_cast<const ControlGroup*>(control) != nullptr || IsSeen(widget);
}

// A frame round option buttons, or the list that the squares are.
class SpokenGroup : public SpokenContainer {
 public:
  using SpokenContainer::SpokenContainer;

  QAccessible::State state() const override {
    QAccessible::State state = SpokenContainer::state();
    // The widget of a mere group is never shown.
    if (!Members().isEmpty()) state.invisible = state.offscreen = 0;
    return state;
  }

  QRect rect() const override {
    QRect whole = SpokenContainer::rect();
    for (const QObject* member : Members()) {
      const auto* widget = static_cast<const QWidget*>(member);
      whole |= QRect(widget->mapToGlobal(QPoint()), widget->size());
    }
    return whole;
  }

 protected:
  QObjectList Children() const override { return Members() + SpokenContainer::Children(); }

 private:
  QObjectList Members() const {
    QObjectList members;
    for (const Control* member : ControlAt(*widget())->Members()) members << member->Native();
    return members;
  }
};

// A control with a group of its own, or with a name that changes.
class SpokenPart : public SpokenContainer {
 public:
  SpokenPart(Control& control, QAccessible::Role role) : SpokenContainer(*control.Native(), role), control_(control) {}

  QAccessibleInterface* parent() const override {
    const Control* group = control_.Group();
    return group == nullptr ? SpokenContainer::parent() : QAccessible::queryAccessibleInterface(group->Native());
  }

  QString text(QAccessible::Text kind) const override {
    if (kind != QAccessible::Name) return SpokenContainer::text(kind);
    if (control_.Spoken) return QtText(control_.Spoken());
    const auto* button = qobject_cast<QAbstractButton*>(widget());
    const bool captioned = button != nullptr && button->accessibleName().isEmpty();
    return captioned ? button->text().remove('&') : SpokenContainer::text(kind);
  }

  QAccessible::State state() const override {
    QAccessible::State state = SpokenContainer::state();
    const auto* button = qobject_cast<QAbstractButton*>(widget());
    state.checkable = button != nullptr && button->isCheckable() ? 1 : 0;
    state.checked = button != nullptr && button->isChecked() ? 1 : 0;
    return state;
  }

  QStringList actionNames() const override {
    QStringList names = SpokenContainer::actionNames();
    names.prepend(pressAction());
    if (control_.MouseDown) names << showMenuAction();
    return names;
  }

  // By way of the mouse and the keys: whatever keeps the user from acting keeps an assistive tool from it.
  void doAction(const QString& name) override {
    if (name == showMenuAction()) {
      Click(Qt::RightButton);
    } else if (name != pressAction()) {
      SpokenContainer::doAction(name);
    } else if (role() != QAccessible::ListItem) {
      Click(Qt::LeftButton);
    } else {
      widget()->setFocus();
      for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent key(type, Qt::Key_Space, {}, " ");
        QCoreApplication::sendEvent(widget(), &key);
      }
    }
  }

 private:
  void Click(Qt::MouseButton button) {
    const QPointF middle = QRectF(widget()->rect()).center();
    const QPointF on_screen = widget()->mapToGlobal(middle);
    QMouseEvent press(QEvent::MouseButtonPress, middle, on_screen, button, button, {});
    QCoreApplication::sendEvent(widget(), &press);
    QMouseEvent release(QEvent::MouseButtonRelease, middle, on_screen, button, {}, {});
    QCoreApplication::sendEvent(widget(), &release);
  }

  Control& control_;
};

}  // namespace

SpokenContainer::SpokenContainer(QWidget& widget, QAccessible::Role role) : QAccessibleWidget(&widget, role) {}

int SpokenContainer::childCount() const { return static_cast<int>(Children().size()); }

QAccessibleInterface* SpokenContainer::child(int index) const {
  return QAccessible::queryAccessibleInterface(Children().value(index));
}

int SpokenContainer::indexOfChild(const QAccessibleInterface* child) const {
  return child == nullptr ? -1 : static_cast<int>(Children().indexOf(child->object()));
}

QObjectList SpokenContainer::Children() const {
  QList<QWidget*> seen;
  for (QObject* object : widget()->children()) {
    auto* inside = qobject_cast<QWidget*>(object);
    if (inside != nullptr && StandsIn(*inside)) seen << inside;
  }
  std::stable_sort(seen.begin(), seen.end(), [](const QWidget* a, const QWidget* b) {
    return std::pair(a->y(), a->x()) < std::pair(b->y(), b->x());
  });
  return {seen.begin(), seen.end()};
}

QAccessibleInterface* SpokenControl(const QString& /*kind*/, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  Control* control = widget == nullptr ? nullptr : ControlAt(*widget);
  if (control == nullptr) return nullptr;
  if (dynamic_cast<ControlGroup*>(control) != nullptr) return new SpokenGroup(*widget, QAccessible::List);
  if (dynamic_cast<Frame*>(control) != nullptr) return new SpokenGroup(*widget, QAccessible::Grouping);
  if (dynamic_cast<TextBox*>(control) != nullptr) return new SpokenLine(*static_cast<QLineEdit*>(widget));
  if (dynamic_cast<OptionButton*>(control) != nullptr) return new SpokenPart(*control, QAccessible::RadioButton);
  const bool pressed_by_mouse = dynamic_cast<CommandButton*>(control) != nullptr && !control->Click;
  if (control->Spoken || pressed_by_mouse) {
    return new SpokenPart(*control, control->Group() != nullptr ? QAccessible::ListItem : QAccessible::Button);
  }
  if (dynamic_cast<PictureBox*>(control) != nullptr) return new SpokenContainer(*widget);
  return nullptr;
}

}  // namespace morva
