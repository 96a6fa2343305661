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

/// One of a group: among the option buttons of one container at most one has the Value True.
class OptionButton : public Control {
 public:
  OptionButton();
  Property<std::string> Caption;
  Property<bool> Value;  ///< assigning True takes it from the others of the group and fires Click, as the user's click
  void PlaceOn(QWidget* parent, double left, double top, double width, double height) override;
  void SetLayoutText(const std::string& text) override { Caption = text; }
};

}  // namespace morva
