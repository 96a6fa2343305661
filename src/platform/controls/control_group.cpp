#include "platform/controls/control_group.h"

#include <QWidget>

namespace morva {

ControlGroup::ControlGroup() : Control(std::make_unique<QWidget>()) { Visible = false; }

}  // namespace morva
