#pragma once

#include "platform/controls.h"
#include "platform/window.h"

namespace morva {

/// The window that shows the instructions file.
class FrmInstructions : public Form {
 public:
  FrmInstructions();

  TextLog textbox;

  void Form_Load() override;
  void Form_Resize() override;
  void Form_Unload() override;
};

inline Window<FrmInstructions> frmInstructions;

}  // namespace morva
