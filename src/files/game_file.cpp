#include <string_view>

#include "files/file_menus.h"
#include "net/frm_control.h"
#include "net/message_reader.h"
#include "net/wire.h"
#include "platform/accessibility/announce.h"
#include "platform/system/plain_files.h"

namespace morva {

namespace {

constexpr char kFilter[] = "Morva Game (*.mrv)|*.mrv";

std::string BoardMessage(std::string_view line) { return std::string(kBoardHead) + std::string(line); }

std::string_view FirstLine(std::string_view text) {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

void mnuSaveGame_Click(FrmChess& window) {
  CommonDialog& dialog = window.OpenSave;
  dialog.DialogTitle = "Save Game as";
  dialog.Filter = kFilter;
  dialog.Flags = kOverwritePrompt | kHideReadOnly | kLongNames;
  if (!dialog.ShowSave()) return;
  // The other side may have moved while the dialog was open.
  const bool saved = WriteFile(dialog.FileName, window.BoardLine() + "\r\n");
  Announce(saved ? "Game saved" : "The game could not be saved");
}

void mnuOpenGame_Click(FrmChess& window) {
  CommonDialog& dialog = window.OpenSave;
  dialog.DialogTitle = "Open Game";
  dialog.Filter = kFilter;
  dialog.Flags = kHideReadOnly | kLongNames;
  if (dialog.ShowOpen()) OpenGame(window, dialog.FileName);
}

void OpenGame(FrmChess& window, const std::string& name) {
  // The other side drops a longer message.
  const auto file = ReadFile(name, MessageReader::kMaxMessage - kBoardHead.size());
  if (!file) return Announce("The game could not be opened");
  const std::string_view line = FirstLine(*file);
  for (std::size_t i = 0; i < kSquares; ++i) {
    if (i == line.size()) return Announce("The file holds only a part of a board");
    window.ReadLetter(static_cast<int>(i), static_cast<unsigned char>(line[i]));
  }
  frmControl->tcp.SendData(BoardMessage(line));
  Announce("Game opened");
}

}  // namespace morva
