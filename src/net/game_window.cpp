#include "net/game_window.h"

#include "net/frm_control.h"
#include "net/sounds.h"
#include "net/text.h"
#include "platform/accessibility/announce.h"
#include "platform/application.h"
#include "platform/dialogs/dialogs.h"

namespace morva {

// Messages keep arriving while a box is open: equal texts share one box, and the number of boxes is limited.
void GameWindow::ShowMessage(const std::string& text) {
  constexpr std::size_t kMaxBoxes = 8;
  if (shown_messages_.size() == kMaxBoxes || !shown_messages_.insert(text).second) return;
  ShowNotice(text, "Message", [this, text] { shown_messages_.erase(text); });
}

void GameWindow::NewChess() {
  PlayResourceSound(kBoardSound);
  ClearHistory();
  SetUpChess();
  ResetClock();
  Announce(who + ": new game of chess");
}

void GameWindow::NewCheckers() {
  PlayResourceSound(kBoardSound);
  ClearHistory();
  SetUpCheckers();
  ResetClock();
  Announce(who + ": new game of checkers");
}

void GameWindow::Disconnect() {
  frmControl->tcp.Close();
  ShowQuestion(Shortened(OpNick) + " has left. Do you want to save the game?", "Morva", [this](bool yes) {
    if (yes) SaveGame();
    End();
  });
}

}  // namespace morva
