#pragma once

#include "platform/system/event_loop.h"
#include "platform/window/window.h"

namespace morva {

/// The start-up picture: it stays for five seconds or until a click or a key.
class FrmSplash : public Form {
 public:
  FrmSplash();
  void Form_Click() override;
  bool Form_KeyDown(Key key, int Shift) override;

 private:
  void tmrTrigger_Timer();
  Timer tmrTrigger{5000};
};

inline Window<FrmSplash> frmSplash;

}  // namespace morva
