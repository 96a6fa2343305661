#pragma once

#include "platform/system/event_loop.h"
#include "platform/window/window.h"

namespace morva {

/// The last-move marker: a round window that flies once from X1, Y1 to X2, Y2, in 40 ticks, and is gone.
class FrmShowMove : public Form {
 public:
  FrmShowMove();
  void Form_Load() override;

  int Step = 0;        ///< ticks so far
  int X1 = 0, X2 = 0;  ///< Left at the start and at the end, twips on the screen
  int Y1 = 0, Y2 = 0;  ///< Top at the start and at the end

 private:
  void hundredth_Timer();
  Timer hundredth{1};
};

inline Window<FrmShowMove> frmShowMove;

}  // namespace morva
