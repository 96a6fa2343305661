#include "fuzz/game.h"

#include <algorithm>
#include <cstdlib>

#include "net/frm_control.h"
#include "net/frm_welcome.h"
#include "platform/application.h"
#include "table/frm_tool_window.h"

namespace morva {
namespace {

constexpr int kInputsAWindow = 1024;

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

// What was sent waits for a connection that never comes; with its window it goes.
void RenewControl() {
  frmControl->tcp.Closed = [] {};
  Unload(frmControl);
  frmWelcome->txtHost.Text = "0.0.0.0";
  Load(frmControl);
  frmControl->tcp.Close();
}

}  // namespace

void StartGame() {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  static int argc = 1;
  static char name[] = "fuzz";
  static char* argv[] = {name, nullptr};
  static auto* const application = new Application(argc, argv);
  game_window = []() -> GameWindow& { return *frmChess; };
  end_program = [] { std::abort(); };
  RenewControl();
  frmChess->Nick = "Ann";
  frmChess->mnuPlaySounds.Checked = false;
  frmChess->mnuAcceptMessages.Checked = false;
  frmChess->Enabled = false;  // or each line of history would take the focus
  frmToolWindow->Hide();
  // It must go before the windows' own static objects.
  std::atexit([] {
    RenewControl();
    delete application;
  });
}

void ClearTable() {
  static int inputs = 0;
  if (++inputs % kInputsAWindow == 0) RenewControl();
  frmChess->ClearBoard();
  frmChess->ClearHistory();
  frmChess->OpNick = "Bob";
  if (!frmChess->txtOut.Text().empty()) frmChess->txtOut.Text = "";
}

void CheckTable() {
  for (const PictureBox& square : frmChess->squ) Require(LeadingNumber(square.Tag).has_value());
  const std::string line = frmChess->BoardLine();
  Require(line.size() == 64);
  Require(std::all_of(line.begin(), line.end(), [](char c) { return c > ' ' && c < 0x7F; }));
  const ListBox& history = frmToolWindow->lstHist;
  for (int i = 0; i < history.ListCount(); ++i) {
    Require(std::none_of(history.List(i).begin(), history.List(i).end(), IsControl));
  }
  for (const char c : frmChess->txtOut.Text()) Require(!IsControl(c) || c == '\r' || c == '\n');
}

}  // namespace morva
