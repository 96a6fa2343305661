#pragma once

#include "platform/controls/control.h"
#include "platform/drawing/contrast.h"
#include "platform/drawing/surface.h"

class QRect;

namespace morva {

/// A drawing surface with or without a sunken border; X and Y of its mouse events and everything drawn count from the
/// corner inside the border. It can show a stored picture and hold other controls.
class PictureBox : public Control, public Surface {
 public:
  enum class Border { kNone, kSunken };
  explicit PictureBox(Border border = Border::kSunken);
  Property<Color> BackColor;
  Property<std::string> Picture;  ///< name of a stored picture; the control takes the picture's size
  Property<Color> FocusColor;     ///< of the lighter focus ring
  Property<bool> Marked;          ///< thinner lines mark it where it has no focus
  void Rescale() override;
  void SetLayoutText(const std::string& text) override { Picture = text; }
  /// The colours at that place of the picture, pixels within the control.
  Ground GroundAt(const QRect& place) const;

 private:
  void LayBorder();
  bool sunken_;
};

/// A drawing surface without a border.
class Panel : public PictureBox {
 public:
  Panel() : PictureBox(Border::kNone) {}
};

/// A stored picture, fitted into the control.
class Image : public Control {
 public:
  Image();
  Property<std::string> Picture;  ///< name of a stored picture
  void Rescale() override;
  void SetLayoutText(const std::string& text) override { Picture = text; }
};

/// A filled circle with a border of one pixel.
class CircleShape : public Control {
 public:
  CircleShape();
  Property<Color> BackColor, BorderColor;
};

/// A horizontal rule; its Height is its thickness.
class Rule : public Control {
 public:
  Rule();
  Property<Color> BorderColor;
};

}  // namespace morva
