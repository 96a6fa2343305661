#include "extras/frm_about_chess.h"

#include "extras/about.h"
#include "extras/frm_author.h"
#include "painting/shadewell.h"
#include "platform/application.h"
#include "table/frm_tool_window.h"

namespace morva {

namespace {

constexpr char kThanks[] =
    "Thanks to everybody who has ever set up a board for two and left a chair free.\n\n"
    "Thanks to all who tried it, to all who lent an ear to its sounds, and to you, for the next game.";

// The program's name stands before it, hence the leading blank.
constexpr char kLegalNotice[] =
    " is free software under the MIT licence. It comes as it is, without any warranty. Whoever loses a game by it has "
    "lost that game fairly.";

}  // namespace

FrmAboutChess::FrmAboutChess() : Form({.scale_width = 7275, .scale_height = 4395}) {
  Place({
      {picTop, 3960, 0, 3240, 720},
      {photo, 5715, 840, 1485, 1815, "portrait"},
      {cmdOK, 6480, 3960, 735, 375, "OK"},
      {picLeft, 0, 0, 660, 4455},
      {Image1, 120, 120, 540, 540, "icon-32", &picLeft},
      {title(0), 720, 120, 6495, 375, "Morva"},
      {title(1), 705, 105, 6495, 375, "Morva"},
      {title(2), 735, 135, 6495, 375, "Morva"},
      {legal, 720, 2880, 6495, 975},
      {Label1, 720, 855, 4935, 1680, kThanks},
      {Line1, 720, 720, 6480, 15},
      {Line2, 720, 735, 6480, 15},
      {Line3, 720, 2745, 6480, 15},
      {Line4, 720, 2760, 6480, 15},
  });
  DefaultButton(cmdOK);
  CancelButton(cmdOK);
  photo.TabStop = true;
  TabOrder({&cmdOK, &photo});

  for (Label& label : title) {
    label.FontSize = 18;
    label.FontBold = true;
  }
  title(1).Kind = title(2).Kind = SpokenKind::kNothing;
  photo.Kind = SpokenKind::kButton;
  photo.Spoken = [] { return "Portrait of the author"; };
  title(0).ForeColor = kBlack;
  title(1).ReliefOf = title(2).ReliefOf = &title(0);
  title(1).ForeColor = kButtonShadow;
  title(2).ForeColor = kButtonHighlight;
  legal.ForeColor = kButtonShadow;
  for (Rule* rule : {&Line1, &Line3}) rule->BorderColor = kButtonShadow;
  for (Rule* rule : {&Line2, &Line4}) rule->BorderColor = kButtonHighlight;

  cmdOK.Click = [this] { cmdOK_Click(); };
  photo.Click = [this] { photo_Click(); };
  photo.KeyDown = [this](Key key, int) {
    if (key == Key::kSpace) photo_Click();
    return key == Key::kSpace;
  };
}

void FrmAboutChess::Form_Load() {
  BelongTo(*frmChess);
  for (Label& label : title) label.Caption = label.Caption() + " " + App::Version();
  legal.Caption = "Legal blabber:\n\n" + title(1).Caption() + kLegalNotice;
  Caption = "About " + title(1).Caption();
  frmToolWindow->Enabled = false;
  frmToolWindow->frmext.ontop = false;
}

void FrmAboutChess::Form_Activate() {
  const Color shadow = SystemColorOf(kButtonShadow);
  const Color face = SystemColorOf(kButtonFace);
  PaintGradient(picLeft, shadow, face, 1);
  PaintGradient(picTop, face, *MixColors(face, kWhite, 50), 1);
}

void FrmAboutChess::Form_Unload() {
  frmChess->Enabled = true;
  frmChess->SetFocus();
  frmToolWindow->Enabled = true;
  frmToolWindow->frmext.ontop = frmToolWindow->mnuAlways.Checked();
}

void FrmAboutChess::cmdOK_Click() {
  frmChess->Enabled = true;
  frmChess->SetFocus();
  Unload(frmAboutChess);
  frmToolWindow->Enabled = true;
}

void FrmAboutChess::photo_Click() { frmAuthor->Show(); }

void ConnectHelpMenu(FrmChess& window) {
  window.mnuAbout.Click = [&window] {
    window.Enabled = false;
    frmAboutChess->Show();
  };
}

}  // namespace morva
