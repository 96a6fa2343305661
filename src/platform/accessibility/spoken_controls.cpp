#include "platform/accessibility/spoken_controls.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <algorithm>

#include "platform/accessibility/spoken_line.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

// The control whose widget this is; none for the widgets inside one.
Control* ControlAt(const QWidget& widget) {
  Control* control = ControlOf(&widget);
  return control != nullptr && control->Native() == &widget ? control : nullptr;
}

bool IsDecoration(const Control& control) {
  return control.Kind == SpokenKind::kNothing ||
         (control.Kind == SpokenKind::kContainer && control.Native()->children().isEmpty());
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
  return control != nullptr && control->Group() == nullptr && !IsDecoration(*control) && IsSeen(widget);
}

// A frame, also of the option buttons that have joined it.
class SpokenGroup : public SpokenContainer {
 public:
  explicit SpokenGroup(const Control& group) : SpokenContainer(*group.Native(), QAccessible::Grouping), group_(group) {}

 protected:
  QObjectList Children() const override {
    QObjectList children;
    for (const Control* member : group_.Members()) children << member->Native();
    return children + SpokenContainer::Children();
  }

 private:
  const Control& group_;
};

// What can be pressed.
class SpokenButton : public SpokenContainer {
 public:
  SpokenButton(const Control& control, QAccessible::Role role)
      : SpokenContainer(*control.Native(), role), control_(control) {}

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

  void doAction(const QString& name) override {
    if (name == pressAction()) {
      Type(Qt::Key_Space);
    } else if (name == showMenuAction()) {
      Type(Qt::Key_Menu);
    } else {
      SpokenContainer::doAction(name);
    }
  }

 private:
  // Whatever keeps the user from acting keeps an assistive tool from it.
  void Type(Qt::Key key) {
    const QPointer<QWidget> pressed = widget();  // which the key can close
    pressed->setFocus();
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, key, {}, key == Qt::Key_Space ? " " : QString());
      if (pressed != nullptr) QCoreApplication::sendEvent(pressed, &event);
    }
  }

  const Control& control_;
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
  const Control* control = widget == nullptr ? nullptr : ControlAt(*widget);
  if (control == nullptr) return nullptr;
  switch (control->Kind) {
    case SpokenKind::kContainer:
      return new SpokenContainer(*widget);
    case SpokenKind::kGroup:
      return new SpokenGroup(*control);
    case SpokenKind::kButton:
      return new SpokenButton(*control, QAccessible::Button);
    case SpokenKind::kOption:
      return new SpokenButton(*control, QAccessible::RadioButton);
    case SpokenKind::kItem:
      return new SpokenButton(*control, QAccessible::ListItem);
    case SpokenKind::kLine:
      return SpokenLine(*static_cast<QLineEdit*>(widget));
    default:
      return nullptr;
  }
}

}  // namespace morva
