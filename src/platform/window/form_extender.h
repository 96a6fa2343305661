#pragma once

#include "platform/window/form.h"

namespace morva {

/// Keeps its window above all others while ontop is True.
class FormExtender {
 public:
  explicit FormExtender(Form& form) : ontop(false, [this, &form] { form.StayOnTop(ontop()); }) {}
  Property<bool> ontop;
};

}  // namespace morva
