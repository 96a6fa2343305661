#pragma once

#include "platform/system/timer.h"
#include "platform/window/window.h"

namespace morva {

/// The start-up picture: it stays for five seconds or until a click.
class FrmSplash : public Form {
 public:
  FrmSplash();
  void Form_Click() override;

 private:
  void tmrTrigger_Timer();
  Timer tmrTrigger{5000};
};

inline Window<FrmSplash> frmSplash;

}  // namespace morva
