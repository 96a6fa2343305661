#include "net/frm_welcome.h"

#include "net/frm_control.h"
#include "net/frm_splash.h"
#include "platform/application.h"
#include "platform/dialogs/dialogs.h"

namespace morva {

namespace {

// Client heights with and without the row of txtHost.
constexpr double kGuestHeight = 2130;
constexpr double kHostHeight = 1665;

void Oops(const std::string& text) { MsgBox(text, "Oops"); }

}  // namespace

FrmWelcome::FrmWelcome()
    : Form({.caption = "Morva", .scale_width = 3915, .scale_height = kGuestHeight, .on_task_bar = true}) {
  Place({
      {cmdGo, 2655, 210, 1155, 420},
      {txtHost, 720, 1680, 1815, 285},
      {txtNick, 720, 1200, 1815, 285, "Me"},
      {Frame1, 120, 120, 2415, 855, "I am the:"},
      {rdoGuest, 1320, 360, 735, 255, "Guest", &Frame1},
      {rdoHost, 240, 360, 735, 255, "Host", &Frame1},
      {lblCopy, 2655, 825, 1155, 1230},
      {Label2, 120, 1710, 495, 255, "Host:"},
      {Label1, 120, 1230, 495, 255, "Nick:"},
  });
  TabOrder({&rdoHost, &rdoGuest, &txtNick, &txtHost, &cmdGo});
  DefaultButton(cmdGo);
  lblCopy.TextAlignment = Alignment::kCenter;
  txtNick.SpokenName = "Nick";
  txtHost.SpokenName = "Host";

  rdoGuest.Click = [this] { rdoGuest_Click(); };
  rdoHost.Click = [this] { rdoHost_Click(); };
  txtNick.GotFocus = [this] { txtNick.SelectAll(); };
  txtHost.GotFocus = [this] { txtHost.SelectAll(); };
  cmdGo.Click = [this] { cmdGo_Click(); };
}

void FrmWelcome::Form_Load() {
  rdoGuest.Value = true;
  lblCopy.Caption = "A board for two\nmade with care\n\nBuild #" + std::to_string(App::Revision);
}

void FrmWelcome::Form_Activate() { Unload(frmSplash); }

void FrmWelcome::rdoGuest_Click() {
  ScaleHeight = kGuestHeight;
  cmdGo.Caption = "Connect";
  txtHost.Enabled = true;
}

void FrmWelcome::rdoHost_Click() {
  ScaleHeight = kHostHeight;
  cmdGo.Caption = "Listen";
  txtHost.Enabled = false;
}

void FrmWelcome::cmdGo_Click() {
  if (txtNick.Text == "") {
    Oops("Please enter your nickname");
    txtNick.SetFocus();
    return;
  }
  if (txtHost.Text == "" && !rdoHost.Value()) {
    Oops("Please enter host IP");
    txtHost.SetFocus();
    return;
  }
  frmControl->Show();
}

}  // namespace morva
