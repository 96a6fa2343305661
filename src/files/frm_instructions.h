#pragma once

#include "platform/controls/text_log.h"
#include "platform/window/window.h"

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

/// Makes the program's own data folder the current one, unless the current one has an instructions file already. The
/// data folder is found from where the program lies; where it can't be found, the current folder stays.
void UseDataFolder();

}  // namespace morva
