#include "files/file_menus.h"

namespace morva {

void ConnectFileMenus(FrmChess& window) {
  window.mnuOpenGame.Click = [&window] { mnuOpenGame_Click(window); };
  window.mnuSaveGame.Click = [&window] { mnuSaveGame_Click(window); };
  window.mnuSaveChat.Click = [&window] { mnuSaveChat_Click(window); };
  window.mnuInstructions.Click = [&window] { mnuInstructions_Click(window); };
}

}  // namespace morva
