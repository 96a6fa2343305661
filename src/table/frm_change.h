#pragma once

#include "platform/controls/buttons.h"
#include "platform/controls/control_array.h"
#include "platform/controls/frame.h"
#include "platform/window/form.h"
#include "platform/window/window.h"

namespace morva {

/// The dialog that puts any piece on a square or removes what stands there. The main window's Tag names the square.
class FrmChange : public Form {
 public:
  FrmChange();

  FormExtender ARFormExtender1{*this};
  CommandButton cmdTrash, cmdCancel, cmdOk;
  Frame Frame3, Frame2, Frame1;
  ControlArray<OptionButton, 2> clr;     ///< 0 black, 1 white
  ControlArray<OptionButton, 8, 1> rdo;  ///< index is the piece code

  void Form_Load() override;

 private:
  void SelectPiece(int piece);
  int ChosenPiece();  ///< its code; 0 for none
  Color ChosenColor() const;
  void cmdOK_Click();
  void cmdTrash_Click();
  void cmdCancel_Click();

  int Index = 0;     ///< the square
  int OldPiece = 0;  ///< what stood there when the dialog opened; the other side's actions don't reach it
};

inline Window<FrmChange> frmChange;

}  // namespace morva
