#pragma once

#include "platform/controls/buttons.h"
#include "platform/controls/control_array.h"
#include "platform/controls/label.h"
#include "platform/controls/pictures.h"
#include "platform/window/window.h"

namespace morva {

/// The About box. While it is open, the main window and the tool window take no input. Its portrait is a button that
/// opens the author window.
class FrmAboutChess : public Form {
 public:
  FrmAboutChess();

  Panel picTop, picLeft;
  PictureBox photo, Image1;
  CommandButton cmdOK;
  ControlArray<Label, 3> title;
  Label legal, Label1;
  Rule Line1, Line2, Line3, Line4;

  void Form_Load() override;
  void Form_Activate() override;
  void Form_SysColorsChanged() override { Form_Activate(); }
  void Form_Unload() override;

 private:
  void cmdOK_Click();
  void photo_Click();
};

inline Window<FrmAboutChess> frmAboutChess;

}  // namespace morva
