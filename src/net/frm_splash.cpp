#include "net/frm_splash.h"

#include "net/frm_welcome.h"

namespace morva {

FrmSplash::FrmSplash()
    : Form({.frame = FormStyle::Frame::kNone, .scale_width = 4500, .scale_height = 3000, .close_box = false}) {
  SetPicture("splash");
  SpokenName = "Morva, press a key to go on";
  tmrTrigger.Tick = [this] { tmrTrigger_Timer(); };
}

void FrmSplash::Form_Click() { frmWelcome->Show(); }

bool FrmSplash::Form_KeyDown(Key /*key*/, int /*Shift*/) {
  frmWelcome->Show();
  return true;
}

void FrmSplash::tmrTrigger_Timer() { frmWelcome->Show(); }

}  // namespace morva
