#pragma once

#include "platform/controls/control.h"
#include "platform/drawing/colors.h"

namespace morva {

enum class Alignment { kLeft, kCenter };

/// Plain text that the user can't change; nothing in it is markup or an access key. Text that doesn't fit is condensed,
/// then made smaller; a line that fits the label, but not the window, ends in "…" at the window's edge.
class Label : public Control {
 public:
  Label();
  Property<std::string> Caption;
  Property<Color> ForeColor;  ///< where it can't be read on the background, the nearest that can
  Property<bool> FontBold;
  Property<double> FontSize;  ///< points of 20 twips
  Property<Alignment> TextAlignment;
  /// Set on a copy of that label's text which lies beside it as a relief. Assistive tools don't see the copy, and
  /// nobody does where the text had to change its colour to be readable.
  const Label* ReliefOf = nullptr;
  void Rescale() override;
  void SetLayoutText(const std::string& text) override { Caption = text; }

 private:
  void Refit();
};

}  // namespace morva
