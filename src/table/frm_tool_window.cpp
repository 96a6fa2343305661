#include "table/frm_tool_window.h"

#include "net/frm_control.h"
#include "painting/shadewell.h"
#include "platform/accessibility/announce.h"
#include "table/frm_chess.h"

namespace morva {

namespace {

std::string PlayerWords(const Label& nick, const CircleShape& disc) {
  return nick.Caption() + (disc.BackColor() == kWhite ? ", white" : ", black") + (nick.FontBold() ? ", to move" : "");
}

}  // namespace

FrmToolWindow::FrmToolWindow()
    : Form({.caption = "Morva Chess/Checkers",
            .frame = FormStyle::Frame::kSizableWidth,
            .scale_width = kScaleWidth,
            .scale_height = 3570,
            .close_box = false,
            .start = FormStyle::Start::kByCode}) {
  Place({
      {picContain, 0, 0, 15000, 1545},
      {rshape, 0, 1095, 375, 375, "", &picContain},
      {lshape, 0, 465, 375, 375, "", &picContain},
      {lblVS, 0, 840, 3255, 255, "vs.", &picContain},
      {lblTime, 0, 0, 3240, 465, "00:00:00", &picContain},
      {lblOpNick, 480, 1080, 15000, 375, "", &picContain},
      {lblNick, 480, 480, 15000, 375, "", &picContain},
      {lbl3D(1), 495, 495, 15000, 360, "", &picContain},
      {lbl3D(0), 465, 465, 15000, 375, "", &picContain},
      {lstHist, 0, 1560, 3240, 2010},
  });
  SetMenu({
      {.depth = 0, .item = mnuHidden, .caption = "b", .hidden = true},
      {.depth = 1, .item = mnuAlways, .caption = "&Always on top", .checked_at_start = true},
  });

  rshape.BackColor = kBlack;
  rshape.BorderColor = kWhite;
  lblVS.TextAlignment = lblTime.TextAlignment = Alignment::kCenter;
  lblTime.FontSize = 18;
  lblTime.FontBold = true;
  for (Label* label : {&lblVS, &lblOpNick, &lblNick, &lbl3D(0)}) label->ForeColor = kButtonShadow;
  lbl3D(1).ForeColor = kButtonHighlight;
  lbl3D(0).ReliefOf = lbl3D(1).ReliefOf = &lblNick;
  for (Label* label : {&lblOpNick, &lblNick, &lbl3D(0), &lbl3D(1)}) {
    label->FontSize = 15.75;
    label->FontBold = true;
  }
  lbl3D(0).Visible = lbl3D(1).Visible = false;
  frmext.ontop = true;

  lblNick.TabStop = lblOpNick.TabStop = true;
  TabOrder({&lblNick, &lblOpNick, &lstHist});
  lstHist.SpokenName = "History";
  for (Label* label : {&lbl3D(0), &lbl3D(1)}) label->Kind = SpokenKind::kNothing;
  lblNick.Kind = lblOpNick.Kind = SpokenKind::kButton;
  lblNick.Spoken = [this] { return PlayerWords(lblNick, lshape); };
  lblOpNick.Spoken = [this] { return PlayerWords(lblOpNick, rshape); };

  lblNick.Click = [this] { lblNick_Click(); };
  lblOpNick.Click = [this] { lblOpNick_Click(); };
  for (Label* label : {&lblNick, &lblOpNick}) {
    label->KeyDown = [label](Key key, int) {
      const bool pressed = key == Key::kSpace || key == Key::kEnter;
      if (pressed) label->Click();
      return pressed;
    };
  }
  for (Label* label : {&lblNick, &lblOpNick, &lblTime, &lblVS}) {
    label->MouseDown = [this, label](int Button, int, float X, float Y) {
      OpenMenuAt(Button, X + label->Left(), Y + label->Top());
    };
  }
  mnuAlways.Click = [this] { mnuAlways_Click(); };
}

void FrmToolWindow::Form_Load() {
  BelongTo(*frmChess);
  mnuAlways.Enabled = CanStayOnTop();
  TypeInto(frmChess->txtIn);
  Caption = frmControl->Nick;
  frmChess->Caption = frmChess->Caption() + " - " + Caption();
  frmChess->SpokenName =
      frmChess->Caption();  // for good: the squares that the title goes on to name speak for themselves
  Top = frmChess->Top();
  Left = frmChess->Left() + frmChess->Width();
  Form_Resize();
}

void FrmToolWindow::Form_Activate() {
  picContain.Cls();
  PaintGradient(picContain, kWhite, SystemColorOf(kButtonFace), 2);
}

void FrmToolWindow::Form_Resize() {
  lblTime.Width = ScaleWidth();
  lblVS.Width = ScaleWidth();
  lstHist.Width = ScaleWidth();
}

void FrmToolWindow::highlight(const std::string& who) {
  const bool changes = (who == "me") != lblNick.FontBold();
  if (who == "me") {
    lblNick.ForeColor = kRed;
    lblNick.FontBold = true;
    lbl3D(0).Visible = true;
    lbl3D(1).Visible = true;
    lblOpNick.FontBold = false;
  } else {
    lblOpNick.FontBold = true;
    lblNick.ForeColor = kButtonShadow;
    lbl3D(0).Visible = false;
    lbl3D(1).Visible = false;
    lblNick.FontBold = false;
  }
  if (changes && !lblOpNick.Caption().empty()) Announce(TurnWords());
}

void FrmToolWindow::AnnounceColor() const {
  Announce((lshape.BackColor() == kWhite ? "You play white. " : "You play black. ") + TurnWords());
}

std::string FrmToolWindow::TurnWords() const {
  return lblNick.FontBold() ? "Your turn" : lblOpNick.Caption() + "'s turn";
}

void FrmToolWindow::lblNick_Click() {
  highlight("me");
  frmControl->tcp.SendData("me");
}

void FrmToolWindow::lblOpNick_Click() {
  highlight("you");
  frmControl->tcp.SendData("you");
}

void FrmToolWindow::Form_MouseDown(int Button, int /*Shift*/, float X, float Y) { OpenMenuAt(Button, X, Y); }

bool FrmToolWindow::Form_KeyDown(Key key, int Shift) {
  if (key == Key::kMenu) {
    OpenMenuAt(kRightButton, 0, lstHist.Top());
    return true;
  }
  if (key == Key::kT && Shift == kCtrlKey) {
    frmChess->PassTurn();
    return true;
  }
  if (key != Key::kF6 || (Shift & ~kShiftKey) != 0 || !frmChess->Enabled()) return false;
  if (Shift == kShiftKey) {
    frmChess->FocusBoard();
  } else {
    frmChess->FocusChat();
  }
  return true;
}

void FrmToolWindow::FocusNick() {
  SetFocus();
  lblNick.SetFocus();
}

void FrmToolWindow::OpenMenuAt(int Button, double X, double Y) {
  if (Button == kRightButton) PopupMenu(mnuHidden, X, Y);
}

void FrmToolWindow::mnuAlways_Click() {
  ToggleChecked(mnuAlways);
  frmext.ontop = mnuAlways.Checked();
}

}  // namespace morva
