#include "platform/registry.h"

#include <QHash>

namespace morva {

namespace {

QHash<const QWidget*, Control*>& Controls() {
  static QHash<const QWidget*, Control*> controls;
  return controls;
}

QHash<const QWidget*, Form*>& Forms() {
  static QHash<const QWidget*, Form*> forms;
  return forms;
}

}  // namespace

Control* ControlOf(const QWidget* widget) {
  for (; widget != nullptr && !widget->isWindow(); widget = widget->parentWidget()) {
    if (Control* control = Controls().value(widget)) return control;
  }
  return nullptr;
}

Form* FormOf(const QWidget* widget) { return widget == nullptr ? nullptr : Forms().value(widget->window()); }

void Register(const QWidget* widget, Control* control) { Controls().insert(widget, control); }

void Register(const QWidget* window, Form* form) { Forms().insert(window, form); }

void Forget(const QWidget* widget) {
  Controls().remove(widget);
  Forms().remove(widget);
}

}  // namespace morva
