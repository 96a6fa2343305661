#pragma once

#include "platform/controls/control.h"
#include "platform/drawing/colors.h"

namespace morva {

enum class Alignment { kLeft, kCenter };

/// Plain text that the user can't change. Nothing in the text is taken for markup or an access key.
class Label : public Control {
 public:
  Label();
  Property<std::string> Caption;
  Property<Color> ForeColor;
  Property<bool> FontBold;
  Property<double> FontSize;  ///< points of 20 twips
  Property<Alignment> TextAlignment;
  void SetLayoutText(const std::string& text) override { Caption = text; }

 private:
  void SetFont();
  void Tint();
};

}  // namespace morva
