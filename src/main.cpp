#include <cstdio>
#include <cstdlib>
#include <optional>
#include <span>
#include <string_view>

#include "extras/about.h"
#include "files/file_menus.h"
#include "files/frm_instructions.h"
#include "net/frm_splash.h"
#include "platform/application.h"
#include "platform/window/zoom.h"
#include "table/frm_chess.h"
#include "table/frm_tool_window.h"

using namespace morva;

namespace {

constexpr char kHelp[] = R"(Morva: chess and checkers for two people at two computers.
Usage: morva [--help | --version]

The host starts first: nick, Host, Listen. The window then shows the address to
tell the guest: nick, Guest, that address, Connect. Over the internet it is the
address of the host's router, which must forward TCP port 2948, and a firewall
must let it in. "Connecting" stays as long as nobody answers: Cancel, try again.

Any piece goes to any empty square. Capture: trash first (the right button),
then move. Tomorrow: F2 saves the board (type the ending .mrv); host first, F3.

The mouse or these keys will do; by ear, too, with a screen reader:
  F6, Tab            on to chat line, board, tool window; within one
  Arrows, Space      on the board: choose a square; take up, put down a piece
  Menu               change or trash what stands on the square
  Ctrl+T, Enter      hand over the turn; send the chat line
  Ctrl+Plus, -, 0    everything larger, smaller, at 100 per cent
  F1, F2, F3         the whole manual; save the game, open one on both boards
  Ctrl+F1, Shift+F1  new game of chess, of checkers
  Ctrl+S             show the last move again
  Ctrl+C, X, Z, W, I call check, check mate, stale mate, wake up, I win

Files: only the games (*.mrv) and chats (*.txt) that you save; no settings. A
morva.txt in the folder where Morva is started is shown in place of its manual.
)";

int CodeAfter(int output_result) { return output_result < 0 ? EXIT_FAILURE : EXIT_SUCCESS; }

// The exit code, if the arguments ask for something else than a game.
std::optional<int> Answer(std::span<char*> arguments) {
  if (arguments.empty()) return std::nullopt;
  const std::string_view word = arguments.front();
  if (word == "--help") return CodeAfter(std::fputs(kHelp, stdout));
  if (word == "--version") return CodeAfter(std::printf("morva %s\n", App::Version().c_str()));
  std::fprintf(stderr, "morva: unknown word '%s'; 'morva --help' tells which there are\n", arguments.front());
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  if (const auto code = Answer({argv + 1, argv + argc})) return *code;
  Application application(argc, argv);
  UseDataFolder();
  Zoom::BeginFor(FrmChess::kScaleWidth, FrmChess::kScaleHeight, FrmToolWindow::kScaleWidth);
  game_window = []() -> GameWindow& { return *frmChess; };
  frmChess.made = [](FrmChess& window) {
    ConnectFileMenus(window);
    ConnectHelpMenu(window);
  };
  frmSplash->Show();
  return application.Run();
}
