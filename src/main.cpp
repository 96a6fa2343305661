#include "extras/about.h"
#include "files/file_menus.h"
#include "net/frm_splash.h"
#include "platform/application.h"
#include "table/frm_chess.h"

using namespace morva;

int main(int argc, char** argv) {
  Application application(argc, argv);
  game_window = []() -> GameWindow& { return *frmChess; };
  frmChess.made = [](FrmChess& window) {
    ConnectFileMenus(window);
    ConnectHelpMenu(window);
  };
  frmSplash->Show();
  return application.Run();
}
