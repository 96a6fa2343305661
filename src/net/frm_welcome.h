#pragma once

#include "platform/controls/buttons.h"
#include "platform/controls/frame.h"
#include "platform/controls/label.h"
#include "platform/controls/text_box.h"
#include "platform/window/window.h"

namespace morva {

/// The dialog in which the user gives a nick and chooses between host and guest.
class FrmWelcome : public Form {
 public:
  FrmWelcome();

  CommandButton cmdGo;
  TextBox txtHost, txtNick;
  Frame Frame1;
  OptionButton rdoGuest, rdoHost;
  Label lblCopy, Label2, Label1;

  void Form_Load() override;
  void Form_Activate() override;

 private:
  void rdoGuest_Click();
  void rdoHost_Click();
  void cmdGo_Click();
};

inline Window<FrmWelcome> frmWelcome;

}  // namespace morva
