#pragma once

#include "platform/controls/label.h"
#include "platform/controls/pictures.h"
#include "platform/window/window.h"

namespace morva {

/// A window without a frame that lies over the About box, its portrait exactly over the portrait there. A click on the
/// portrait closes it, and so do Escape, Enter and Space.
class FrmAuthor : public Form {
 public:
  FrmAuthor();

  PictureBox photo;
  Label lblPhoto;
  Panel picGrad, picSmalGrad;
  Label lblTheAuthor, lblAuthorOf, lblInfo;
  Rule ln;

  void Form_Load() override;
  void Form_Activate() override;
  void Form_Resize() override;
  bool Form_KeyDown(Key key, int Shift) override;
  void Form_SysColorsChanged() override { Form_Activate(); }

 private:
  void photo_Click();
};

inline Window<FrmAuthor> frmAuthor;

}  // namespace morva
