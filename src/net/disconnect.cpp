#include "net/frm_control.h"
#include "net/game_window.h"
#include "platform/application.h"
#include "platform/dialogs.h"

namespace morva {

void GameWindow::Disconnect() {
  frmControl->tcp.Close();
  const MsgBoxResult answer = MsgBox(OpNick + " has left. Do you want to save the game?", "Morva",
                                     MsgBoxButtons::kYesNo, MsgBoxIcon::kExclamation);
  if (answer == MsgBoxResult::kYes) SaveGame();
  End();
}

}  // namespace morva
