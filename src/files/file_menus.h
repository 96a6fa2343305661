#pragma once

#include "table/frm_chess.h"

namespace morva {

/// Connects the file items of the main window's menu to the routines below. None of them shows a failure, which only a
/// screen reader tells: where a file can't be read or written, nothing more happens.
void ConnectFileMenus(FrmChess& window);

/// Asks for a name and writes the board there, as it is once the name is given: a file of one line of 64 letters.
void mnuSaveGame_Click(FrmChess& window);

/// Asks for a game file and opens it.
void mnuOpenGame_Click(FrmChess& window);
/// Puts the first line of a file on the board here and, by a message, on the other side's. Where the line is too short,
/// the squares before its end change, and nothing is sent.
void OpenGame(FrmChess& window, const std::string& name);

/// Asks for a name and writes the chat log there, UTF-8.
void mnuSaveChat_Click(FrmChess& window);

/// Shows the instructions. While they are open, the main window and the tool window take no input. Nothing happens
/// where the current folder has no instructions file.
void mnuInstructions_Click(FrmChess& window);

}  // namespace morva
