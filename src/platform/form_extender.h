#pragma once

#include "platform/form.h"

namespace morva {

/// Keeps its window above all others while ontop is True.
class FormExtender {
 public:
  explicit FormExtender(Form& form) {
    ontop.assigned = [this, &form] { form.StayOnTop(ontop()); };
  }
  Property<bool> ontop;
};

}  // namespace morva
