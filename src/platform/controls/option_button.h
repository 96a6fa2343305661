#pragma once

#include "platform/controls/control.h"

namespace morva {

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
