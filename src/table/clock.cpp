#include "table/frm_chess.h"
#include "table/frm_tool_window.h"

namespace morva {

void FrmChess::onesec_Timer() {
  ++sec;
  if (sec == 60) {
    sec = 0;
    ++min;
  }
  if (min == 60) {
    min = 0;
    ++hour;
  }
  frmToolWindow->lblTime.Caption = TwoDigits(hour) + ":" + TwoDigits(min) + ":" + TwoDigits(sec);
}

}  // namespace morva
