#pragma once

#include <string>

#include "platform/controls/control_array.h"
#include "platform/controls/label.h"
#include "platform/controls/list_box.h"
#include "platform/controls/pictures.h"
#include "platform/window/form.h"
#include "platform/window/window.h"

namespace morva {

/// The window beside the main window: nicks with their discs, the turn, the clock and the history.
class FrmToolWindow : public Form {
 public:
  static constexpr double kScaleWidth = 3240;  ///< client area, twips

  FrmToolWindow();

  Panel picContain;
  CircleShape rshape, lshape;
  Label lblVS, lblTime, lblOpNick, lblNick;
  ControlArray<Label, 2> lbl3D;
  ListBox lstHist;
  FormExtender frmext{*this};
  Menu mnuHidden, mnuAlways;

  void Form_Load() override;
  void Form_Activate() override;
  void Form_SysColorsChanged() override { Form_Activate(); }
  void Form_Resize() override;
  void Form_MouseDown(int Button, int Shift, float X, float Y) override;
  bool Form_KeyDown(Key key, int Shift) override;

  /// Shows whose turn it is: "me" for the local player, anything else for the other one.
  void highlight(const std::string& who);
  /// Says, to assistive tools, which colour the local player plays, and whose turn it is.
  void AnnounceColor() const;
  void FocusNick();  ///< gives the focus to this window's first control

 private:
  std::string TurnWords() const;
  void lblNick_Click();
  void lblOpNick_Click();
  void mnuAlways_Click();
  void OpenMenuAt(int Button, double X, double Y);
};

inline Window<FrmToolWindow> frmToolWindow;

}  // namespace morva
