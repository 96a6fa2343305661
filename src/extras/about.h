#pragma once

#include "table/frm_chess.h"

namespace morva {

/// Connects the menu item that opens the About box.
void ConnectHelpMenu(FrmChess& window);

}  // namespace morva
