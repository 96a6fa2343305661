#include "table/frm_chess.h"

#include "net/frm_control.h"
#include "platform/accessibility/announce.h"
#include "platform/application.h"
#include "table/frm_tool_window.h"

namespace morva {

FrmChess::FrmChess()
    : GameWindow({.caption = "Morva",
                  .scale_width = kScaleWidth,
                  .scale_height = kScaleHeight,
                  .minimise_box = true,
                  .on_task_bar = true}) {
  LayOut();
  ConnectEvents();
}

void FrmChess::LayOut() {
  Place(coordinates.Layout());
  Place({
      {cmdDefault, 5520, 7320, 540, 225, "Send"},
      {txtIn, 0, 7800, 6720, 285},
      {txtOut, 0, 6720, 6720, 1095},
  });
  PlaceSquares();
  DefaultButton(cmdDefault);
  TypeInto(txtIn);
  txtOut.HideCaret();  // the visible one is in the chat line
  txtIn.SpokenName = "Chat";
  txtOut.SpokenName = "Chat log";

  // Tab stops at one square of the board, the cursor's, and at nothing that is off the screen.
  squ(Cursor).TabStop = true;
  txtOut.TabStop = cmdDefault.TabStop = false;
  std::vector<Control*> order;
  for (PictureBox& square : squ) order.push_back(&square);
  order.insert(order.end(), {&txtOut, &txtIn, &cmdDefault});
  for (CommandButton& label : coordinates.Coord) order.push_back(&label);
  order.push_back(&coordinates.cmdShowCoord);
  TabOrder(order);
  txtIn.SetFocus();

  SetMenu({
      {0, mnuGame, "&Game"},
      {1, mnuOpenGame, "&Open game...", "F3"},
      {1, mnuSaveGame, "S&ave Game...", "F2"},
      {1, mnuSep0, "-"},
      {1, mnuNewGame, "&New game"},
      {2, mnuNewChess, "Che&ss", "Ctrl+F1"},
      {2, mnuNewCheckers, "Che&ckers", "Shift+F1"},
      {1, mnuClear, "&Clear Board"},
      {1, mnuSaveChat, "Sa&ve Chat..."},
      {1, mnuSep2, "-"},
      {1, mnuPlaySounds, "&Play Sounds", "", true},
      {1, mnuSepNewGame, "-"},
      {1, mnuQuit, "&Quit"},
      {0, mnuMessage, "&Message"},
      {1, mnuAcceptMessages, "&Accept Messages", "", true},
      {1, mnuSepMessages, "-"},
      {1, mnuSend, "&Send Message"},
      {2, mnuCheck, "&Check", "Ctrl+C"},
      {2, mnuCheckMate, "Check &Mate", "Ctrl+X"},
      {2, mnuStaleMate, "&Stale Mate", "Ctrl+Z"},
      {2, mnuSepMessage2, "-"},
      {2, mnuWakeUp, "&Wake up", "Ctrl+W"},
      {2, mnuIWin, "&I win", "Ctrl+I"},
      {0, mnuMisc, "M&isc"},
      {1, mnuShowLast, "&Show Last Move", "Ctrl+S"},
      {0, mnuHelp, "&Help"},
      {1, mnuInstructions, "&Instructions", "F1"},
      {1, mnuSepHelp, "-"},
      {1, mnuAbout, "&About"},
  });
  cd.DialogTitle = "Save Chat";
  cd.FileName = "*.txt";
}

void FrmChess::ConnectEvents() {
  for (PictureBox& square : squ) {
    const int Index = square.Index;
    square.Spoken = [this, Index] { return SquareWords(Index); };
    square.MouseDown = [this, Index](int Button, int, float X, float Y) { squ_MouseDown(Index, Button, X, Y); };
    square.GotFocus = [this, Index] {
      if (!Carried) NameInTitle(Index);
    };
    square.MouseMove = [this, Index](int, int, float, float) { NameInTitle(Index); };
    square.KeyDown = [this, Index](Key key, int Shift) { return squ_KeyDown(Index, key, Shift); };
    square.DragOver = [this, Index](Control& Source, float, float, DragState State) {
      PutBack();  // the hand can't hold a second piece
      squ_DragOver(Index, Source, State);
    };
    square.DragDrop = [this, Index](Control& Source, float, float) { squ_DragDrop(Index, Source); };
  }
  coordinates.cmdShowCoord.MouseDown = [this](int, int, float, float) { cmdShowCoord_MouseDown(); };
  coordinates.cmdShowCoord.KeyDown = [this](Key key, int) {
    if (key == Key::kSpace) cmdShowCoord_MouseDown();
    return key == Key::kSpace;
  };
  for (CommandButton& label : coordinates.Coord) {
    label.MouseDown = [this](int, int, float, float) { Coord_MouseDown(); };
    label.KeyDown = [this](Key key, int) {
      if (key == Key::kSpace) Coord_MouseDown();
      return key == Key::kSpace;
    };
  }

  txtIn.KeyDown = [this](Key key, int Shift) { return txtIn_KeyDown(key, Shift); };
  txtIn.KeyPress = [this](int KeyAscii) { txtIn_KeyPress(KeyAscii); };
  txtOut.GotFocus = [this] { txtOut_GotFocus(); };
  cmdDefault.Click = [this] { cmdDefault_Click(); };
  onesec.Tick = [this] { onesec_Timer(); };

  mnuNewChess.Click = [this] { mnuNewChess_Click(); };
  mnuNewCheckers.Click = [this] { mnuNewCheckers_Click(); };
  mnuClear.Click = [this] { mnuClear_Click(); };
  mnuPlaySounds.Click = [this] { ToggleChecked(mnuPlaySounds); };
  mnuQuit.Click = [this] { mnuQuit_Click(); };

  mnuAcceptMessages.Click = [this] { ToggleChecked(mnuAcceptMessages); };
  mnuCheck.Click = [this] { SendCanned(kCheck); };
  mnuCheckMate.Click = [this] { SendCanned(kCheckMate); };
  mnuStaleMate.Click = [this] { SendCanned(kStaleMate); };
  mnuIWin.Click = [this] { SendCanned(kIWin); };
  mnuWakeUp.Click = [this] { SendCanned(kWakeUp); };
  mnuShowLast.Click = [this] { Slide(); };
}

void FrmChess::Form_Load() {
  PaintChess();
  cmdDefault.Left = -10000;
  if (frmControl->Mode == "client") {
    frmToolWindow->lshape.BackColor = kBlack;
    frmToolWindow->lshape.BorderColor = kWhite;
    frmToolWindow->rshape.BackColor = kWhite;
    frmToolWindow->rshape.BorderColor = kBlack;
    frmToolWindow->highlight("you");
  } else {
    frmToolWindow->highlight("me");
  }
  frmToolWindow->Show();
  OpenSave.InitDir = App::Path();
}

void FrmChess::Form_Activate() {
  if (Init) return;
  Init = true;
  Left = Left() - frmToolWindow->Width() / 2;
  frmToolWindow->Left = Left() + Width();
  frmToolWindow->Top = Top();
  coordinates.Collapse();
  txtIn.SetFocus();
}

void FrmChess::Form_GotFocus() {
  frmToolWindow->frmext.ontop = true;
  frmToolWindow->frmext.ontop = frmToolWindow->mnuAlways.Checked();
}

void FrmChess::Form_Unload() {
  onesec.Enabled = false;
  frmControl->tcp.Close();
  Unload(frmControl);
  Unload(frmToolWindow);
  Unload(frmCoords);
}

void FrmChess::mnuQuit_Click() {
  Form_Unload();
  End();
}

void FrmChess::cmdShowCoord_MouseDown() {
  coordinates.Toggle();
  txtIn.SetFocus();
}

void FrmChess::Coord_MouseDown() { txtIn.SetFocus(); }

void FrmChess::AddHistoryLine(const std::string& text, std::int32_t data) {
  ListBox& history = frmToolWindow->lstHist;
  history.AddItem(text);
  Announce(text);
  history.ListIndex = history.ListCount() - 1;
  history.ItemData(history.ListIndex()) = data;
  if (Enabled()) FocusChat();
}

void FrmChess::highlight(const std::string& turn) { frmToolWindow->highlight(turn); }

void FrmChess::ShowNicks() {
  const bool table_opens = frmToolWindow->lblOpNick.Caption().empty();
  frmToolWindow->lblOpNick.Caption = OpNick;
  for (Label* label : {&frmToolWindow->lblNick, &frmToolWindow->lbl3D(0), &frmToolWindow->lbl3D(1)}) {
    label->Caption = Nick;
  }
  if (table_opens) frmToolWindow->AnnounceColor();
}

void FrmChess::ClearHistory() { frmToolWindow->lstHist.Clear(); }

void FrmChess::SaveGame() { mnuSaveGame.Click(); }

void FrmChess::ResetClock() { clock = {}; }

void FrmChess::onesec_Timer() {
  clock.AddSecond();
  frmToolWindow->lblTime.Caption = clock.Text();
}

bool FrmChess::AcceptsMessages() const { return mnuAcceptMessages.Checked(); }

void ToggleChecked(Menu& item) { item.Checked = !item.Checked(); }

}  // namespace morva
