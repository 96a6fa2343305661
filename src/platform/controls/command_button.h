#pragma once

#include "platform/controls/control.h"

namespace morva {

/// A push button; the caption wraps where it is wider than the button, and "&" marks its access key.
class CommandButton : public Control {
 public:
  CommandButton();
  Property<std::string> Caption;
  void SetLayoutText(const std::string& text) override { Caption = text; }
};

}  // namespace morva
