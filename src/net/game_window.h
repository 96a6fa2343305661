#pragma once

#include <functional>
#include <set>
#include <string>

#include "board/board.h"
#include "platform/window/menu.h"

namespace morva {

/// The main window as one end of the connection: the other side's actions enter the game here. The window above
/// implements what this layer needs of the table.
class GameWindow : public Board {
 public:
  using Board::Board;

  /// Sorts one complete message, as bytes and not empty: "me" and "you" set the turn, a typed message goes to Receive.
  void Dispatch(const std::string& message);
  /// Repeats one of the other side's actions: the payload of a typed message, as bytes. A message that names no square,
  /// or is too short for its type, has no effect.
  void Receive(const std::string& Data, int dtype);

  /// Starts a new game on this side, by `who`, with its sound: empties the history, sets up the pieces, resets the
  /// clock.
  void NewChess();
  void NewCheckers();

  /// The other side has left: offers to save the game, then ends the program.
  void Disconnect();

  virtual void out(const std::string& s) = 0;          ///< a line of chat
  virtual void highlight(const std::string& who) = 0;  ///< shows the turn: "me" or "you"
  virtual void ShowNicks() = 0;                        ///< Nick and OpNick are known
  virtual void ClearHistory() = 0;
  virtual void ResetClock() = 0;
  virtual void PlayResourceSound(int id) = 0;  ///< one of net/sounds.h
  virtual void SaveGame() = 0;                 ///< asks for a name and saves, or doesn't
  virtual bool AcceptsMessages() const = 0;

 private:
  void ReceiveWord(const std::string& Data);
  void ReceiveBoardAction(const std::string& Data);
  void ReceiveBoard(const std::string& letters);
  void ReceiveMove(const std::string& Data);
  void ReceiveNick(const std::string& Data);
  void ReceiveTrash(const std::string& Data);
  void ReceiveChange(const std::string& Data);
  void ShowMessage(const std::string& text);

  std::set<std::string> shown_messages_;  ///< the texts of open boxes
};

/// Returns the table's main window. Set at the start of the program, because this folder can't include the table.
inline std::function<GameWindow&()> game_window;

}  // namespace morva
