#pragma once

#include "platform/controls/control.h"
#include "platform/drawing/colors.h"

namespace morva {

enum class Alignment { kLeft, kCenter };

/// Plain text that the user can't change. Nothing in the text is taken for markup or an access key. Where it doesn't
/// fit, it is set narrower and then smaller; a line that fits the label, but not the window, ends in "…" at its edge.
class Label : public Control {
 public:
  Label();
  Property<std::string> Caption;
  Property<Color> ForeColor;  ///< what can't be read on what stands behind it is painted in the nearest that can
  Property<bool> FontBold;
  Property<double> FontSize;  ///< points of 20 twips
  Property<Alignment> TextAlignment;
  /// Set on a copy of that label's words that lies beside it as its relief: the copy isn't there to be read and keeps
  /// its colour, but isn't seen where the words had to change theirs.
  const Label* ReliefOf = nullptr;
  void Rescale() override;
  void SetLayoutText(const std::string& text) override { Caption = text; }

 private:
  void SetFont();
};

}  // namespace morva
