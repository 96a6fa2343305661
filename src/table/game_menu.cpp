#include "net/sounds.h"
#include "net/wire.h"
#include "platform/accessibility/announce.h"
#include "table/frm_chess.h"

namespace morva {

void FrmChess::mnuNewChess_Click() {
  who = Nick;
  NewChess();
  Transmit("new", kBoard);
  txtIn.SetFocus();
}

void FrmChess::mnuNewCheckers_Click() {
  who = Nick;
  NewCheckers();
  Transmit("newc", kBoard);
  txtIn.SetFocus();
}

void FrmChess::mnuClear_Click() {
  PlayResourceSound(kBoardSound);
  Transmit("clear", kBoard);
  ClearBoard();
  Announce(Nick + ": board cleared");
}

}  // namespace morva
