#include <optional>

#include "platform/accessibility/announce.h"
#include "table/frm_chess.h"
#include "table/frm_tool_window.h"

namespace morva {

namespace {

constexpr Color kCarrying = 0x00D7FF;  // yellow
constexpr float kMiddle = 390;         // of a square inside its border, twips

// The square to which the key moves the cursor from square i; none if it does not move the cursor.
std::optional<int> SquareFrom(int i, Key key, int Shift) {
  const int column = i % 8;
  const bool whole_board = (Shift & kCtrlKey) != 0;
  switch (key) {
    case Key::kLeft:
      return column > 0 ? i - 1 : i;
    case Key::kRight:
      return column < 7 ? i + 1 : i;
    case Key::kUp:
      return i > 7 ? i - 8 : i;
    case Key::kDown:
      return i < kSquares - 8 ? i + 8 : i;
    case Key::kHome:
      return whole_board ? 0 : i - column;
    case Key::kEnd:
      return whole_board ? kSquares - 1 : i - column + 7;
    default:
      return std::nullopt;
  }
}

}  // namespace

bool FrmChess::squ_KeyDown(int Index, Key key, int Shift) {
  if (key == Key::kSpace) {
    if (Carried) {
      DropCarried(Index);
    } else {
      TakeUp(Index);
    }
    return true;
  }
  if (key == Key::kMenu) {
    PutBack();
    OpenChangeDialog(Index, kMiddle, kMiddle);
    return true;
  }
  const std::optional<int> next = SquareFrom(Index, key, Shift);
  if (next == Cursor) TellEdge();
  if (next) MoveCursor(*next);
  return next.has_value();
}

// Once, however long the key is held.
void FrmChess::TellEdge() {
  const auto now = std::chrono::steady_clock::now();
  if (now - edge_met_ > std::chrono::seconds(1)) Announce("Edge of the board");
  edge_met_ = now;
}

void FrmChess::MoveCursor(int Index) {
  squ(Cursor).TabStop = false;
  Cursor = Index;
  squ(Cursor).TabStop = true;
  squ(Cursor).SetFocus();
  if (Carried) squ_DragOver(Cursor, squ(*Carried), DragState::kEnter);
}

void FrmChess::TakeUp(int Index) {
  if (Val(squ(Index).Tag) == 0) return Announce(SquareWords(Index));
  Announce(PieceColorName(Index) + " taken up");
  Carry(Index);
  squ_DragOver(Index, squ(Index), DragState::kEnter);
}

void FrmChess::DropCarried(int Index) {
  if (Val(squ(Index).Tag) != 0) return Announce(SquareName(Index) + " is not empty");
  const PictureBox& source = squ(*Carried);
  Carry({});
  squ_DragDrop(Index, source);
}

void FrmChess::PutBack() {
  if (!Carried) return;
  if (Val(squ(*Carried).Tag) != 0) Announce(PieceColorName(*Carried) + " put back");
  squ_DragOver(Cursor, squ(*Carried), DragState::kLeave);
  Carry({});
  if (squ(Cursor).HasFocus()) NameInTitle(Cursor);
}

void FrmChess::PutPiece(int Index, int code, Color color) {
  if (Carried == Index) PutBack();
  Board::PutPiece(Index, code, color);
}

void FrmChess::EmptySquare(int Index) {
  if (Carried == Index) PutBack();
  Board::EmptySquare(Index);
}

// Over a piece the board shows no mark, so the cursor itself shows that something is being carried.
void FrmChess::Carry(std::optional<int> from) {
  if (Carried) squ(*Carried).Marked = false;
  if (from) squ(*from).Marked = true;
  Carried = from;
  for (PictureBox& square : squ) square.FocusColor = from ? kCarrying : kWhite;
}

void FrmChess::FocusBoard() {
  SetFocus();
  squ(Cursor).SetFocus();
}

void FrmChess::FocusChat() {
  SetFocus();
  txtIn.SetFocus();
}

bool FrmChess::Form_KeyDown(Key key, int Shift) {
  if (key == Key::kEnter) {
    cmdDefault_Click();
  } else if (key == Key::kEscape && Carried) {
    PutBack();
  } else if (key == Key::kT && Shift == kCtrlKey) {
    PassTurn();
  } else if (key == Key::kF6 && Shift == 0 && txtIn.HasFocus()) {
    FocusBoard();
  } else if (key == Key::kF6 && Shift == kShiftKey && !txtIn.HasFocus()) {
    FocusChat();
  } else if (key == Key::kF6 && (Shift == 0 || Shift == kShiftKey)) {
    frmToolWindow->FocusNick();
  } else {
    return false;
  }
  return true;
}

}  // namespace morva
