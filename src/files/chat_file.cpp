#include "files/file_menus.h"
#include "platform/accessibility/announce.h"
#include "platform/application.h"
#include "platform/system/plain_files.h"

namespace morva {

void mnuSaveChat_Click(FrmChess& window) {
  CommonDialog& dialog = window.cd;
  dialog.InitDir = App::Path();
  dialog.Filter = "Text (*.txt)|*.txt";
  dialog.Flags = kOverwritePrompt | kHideReadOnly | kLongNames;
  if (!dialog.ShowSave()) return;
  const bool saved = WriteFile(dialog.FileName, window.txtOut.Text() + "\r\n");
  Announce(saved ? "Chat saved" : "The chat could not be saved");
}

}  // namespace morva
