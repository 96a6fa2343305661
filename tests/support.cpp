#include "tests/game.h"

#include "extras/about.h"
#include "files/file_menus.h"

using namespace morva;

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  Application application(argc, argv);
  game_window = []() -> GameWindow& { return *frmChess; };
  frmChess.made = [](FrmChess& window) {
    ConnectFileMenus(window);
    ConnectHelpMenu(window);
  };
  end_program = [] { throw Ended(); };
  return RUN_ALL_TESTS();
}
