#pragma once

#include "table/frm_chess.h"

namespace morva {

/// Gives the menu item of the main window that opens the About box its handler.
void ConnectHelpMenu(FrmChess& window);

}  // namespace morva
