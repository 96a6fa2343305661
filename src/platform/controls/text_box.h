#pragma once

#include "platform/controls/control.h"

namespace morva {

/// One line of input, without a length limit.
class TextBox : public Control {
 public:
  TextBox();
  Property<std::string> Text;  ///< UTF-8
  /// Each key with a character, before the text takes it. Enter is the window's, for its default button.
  std::function<void(int KeyAscii)> KeyPress;
  void SelectAll();
  void SetLayoutText(const std::string& text) override { Text = text; }
};

}  // namespace morva
