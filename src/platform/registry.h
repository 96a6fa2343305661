#pragma once

#include <QWidget>

namespace morva {

class Control;
class Form;

/// The control that the widget is, or is a part of; none for the bare client area.
Control* ControlOf(const QWidget* widget);
/// The window that the widget stands on; none for the toolkit's own windows (menus, boxes).
Form* FormOf(const QWidget* widget);

void Register(const QWidget* widget, Control* control);
void Register(const QWidget* window, Form* form);
void Forget(const QWidget* widget);

}  // namespace morva
