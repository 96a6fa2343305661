#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "net/canned_words.h"
#include "net/game_window.h"
#include "painting/coordinates.h"
#include "platform/controls/buttons.h"
#include "platform/controls/text_box.h"
#include "platform/controls/text_log.h"
#include "platform/dialogs/dialogs.h"
#include "platform/system/event_loop.h"
#include "platform/window/window.h"
#include "table/clock.h"

namespace morva {

/// The main window: the board, the chat and the menus. Its handlers stand by subject: mouse.cpp, chat.cpp,
/// game_menu.cpp, sounds.cpp, board_keys.cpp; the marker of the last move in frm_show_move.cpp.
class FrmChess : public GameWindow {
 public:
  static constexpr double kScaleWidth = 6720, kScaleHeight = 8085;  ///< client area, twips

  FrmChess();

  bool Init = false;  ///< whether the window has been activated once
  Clock clock;
  Coordinates coordinates;

  CommandButton cmdDefault;
  TextBox txtIn;
  TextLog txtOut;
  Timer onesec{1000};
  CommonDialog cd;        ///< for the chat file
  CommonDialog OpenSave;  ///< for the game file

  Menu mnuGame, mnuOpenGame, mnuSaveGame, mnuSep0, mnuNewGame, mnuNewChess, mnuNewCheckers, mnuClear, mnuSaveChat,
      mnuSep2, mnuPlaySounds, mnuSepNewGame, mnuQuit;
  Menu mnuMessage, mnuAcceptMessages, mnuSepMessages, mnuSend, mnuCheck, mnuCheckMate, mnuStaleMate, mnuSepMessage2,
      mnuWakeUp, mnuIWin;
  Menu mnuMisc, mnuShowLast;
  Menu mnuHelp, mnuInstructions, mnuSepHelp, mnuAbout;

  void Form_Load() override;
  void Form_Activate() override;
  void Form_GotFocus() override;
  void Form_Unload() override;
  void Form_MouseDown(int Button, int Shift, float X, float Y) override;
  void Form_DragOver(Control& Source, float X, float Y, DragState State) override;
  bool Form_KeyDown(Key key, int Shift) override;

  int Cursor = 0;              ///< the square that has the keyboard focus, or had it last
  std::optional<int> Carried;  ///< the square of the piece that is being carried by keys

  /// Gives the focus to the cursor's square, or to the chat line.
  void FocusBoard();
  void FocusChat();
  /// Hands over the turn, or takes it back.
  void PassTurn();

  /// Adds a line to the chat log.
  void out(const std::string& s) override;
  /// Plays one of the stored sounds while sounds are on.
  void PlayResourceSound(int id) override;
  /// Flies the marker from the from square of the last move to its to square.
  void Slide();

  /// As the board does, and a piece that is carried from the square is put back there first.
  void PutPiece(int Index, int code, Color color) override;
  void EmptySquare(int Index) override;
  void AddHistoryLine(const std::string& text, std::int32_t data) override;
  void highlight(const std::string& who) override;
  void ShowNicks() override;
  void ClearHistory() override;
  void ResetClock() override;
  void SaveGame() override;
  bool AcceptsMessages() const override;

 private:
  void LayOut();
  void ConnectEvents();

  void squ_MouseDown(int Index, int Button, float X, float Y);
  void NameInTitle(int Index);
  void squ_DragOver(int Index, const Control& Source, DragState State);
  void squ_DragDrop(int Index, const Control& Source);
  bool squ_KeyDown(int Index, Key key, int Shift);
  void TellEdge();
  void MoveCursor(int Index);
  void TakeUp(int Index);
  void DropCarried(int Index);
  void PutBack();
  void Carry(std::optional<int> from);
  void OpenChangeDialog(int Index, float X, float Y);
  void ClearMarks();

  void cmdShowCoord_MouseDown();
  void Coord_MouseDown();
  void txtIn_KeyPress(int KeyAscii);
  bool txtIn_KeyDown(Key key, int Shift);
  void LeafThroughLog(int pages);
  void RecallLine(std::size_t which);
  void txtOut_GotFocus();
  void cmdDefault_Click();
  void SendCanned(const CannedWord& canned);

  void mnuNewChess_Click();
  void mnuNewCheckers_Click();
  void mnuClear_Click();
  void mnuQuit_Click();

  void onesec_Timer();

  std::chrono::steady_clock::time_point edge_met_;  ///< when the cursor last stopped at an edge
  std::vector<std::string> said_;                   ///< chat lines of this user, oldest first
  std::size_t recalled_ = 0;                        ///< index of the one in the chat line; their count for a new line
  std::string unsaid_;                              ///< the new line, while an old one stands in the chat line
};

inline Window<FrmChess> frmChess;

/// Turns a menu item's check mark over.
void ToggleChecked(Menu& item);

}  // namespace morva
