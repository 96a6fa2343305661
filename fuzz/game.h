#pragma once

#include <string>

#include "table/frm_chess.h"

namespace morva {

/// Makes the program's windows in this process, once: without a screen, a connection, sounds or boxes.
void StartGame();

/// An empty board, history and chat log; the nicks "Ann" here and "Bob" there.
void ClearTable();

/// Stops the process unless all 64 squares hold a number, the board can be written as 64 printable letters, and
/// neither history nor chat hold a control character.
void CheckTable();

inline void Require(bool holds) {
  if (!holds) __builtin_trap();
}

}  // namespace morva
