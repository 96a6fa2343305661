#pragma once

#include "platform/controls/control.h"

namespace morva {

/// A titled box round other controls.
class Frame : public Control {
 public:
  Frame();
  Property<std::string> Caption;
  void SetLayoutText(const std::string& text) override { Caption = text; }
};

}  // namespace morva
