#include "extras/frm_author.h"

#include "extras/frm_about_chess.h"
#include "painting/shadewell.h"

namespace morva {

namespace {

constexpr char kInfo[] =
    "They are not one person but several, and they cannot agree who plays white.\n\n"
    "They made Morva for two friends at two computers who would sooner talk a rule over than be told it by a "
    "machine.\n\n"
    "The portrait shows the only one of them who would sit still.";

}  // namespace

FrmAuthor::FrmAuthor()
    : Form({.scale_width = 5685,
            .scale_height = 2895,
            .close_box = false,
            .title_bar = false,
            .start = FormStyle::Start::kByCode,
            .within_owner = true}) {
  Place({
      {photo, 4200, 0, 1485, 1815},
      {lblPhoto, 4320, 1965, 1215, 795, "The king,\nat home on E8."},
      {picGrad, 0, 0, 4215, 2895},
      {picSmalGrad, 2655, 450, 1410, 30, "", &picGrad},
      {lblTheAuthor, 0, 0, 4095, 495, "The Morva developers", &picGrad},
      {lblAuthorOf, 0, 480, 4095, 255, "The Author of Morva", &picGrad},
      {lblInfo, 0, 720, 4095, 2175, kInfo, &picGrad},
      // A pen of two pixels on the height 465.
      {ln, 0, 450, 3795, 30, "", &picGrad},
  });
  for (Label* label : {&lblPhoto, &lblTheAuthor, &lblAuthorOf, &lblInfo}) label->TextAlignment = Alignment::kCenter;
  lblTheAuthor.FontSize = 20.25;
  lblTheAuthor.FontBold = true;
  lblAuthorOf.FontSize = 9.75;
  lblAuthorOf.FontBold = true;

  SpokenName = lblTheAuthor.Caption();
  photo.Kind = SpokenKind::kButton;
  photo.Spoken = [] { return "Portrait, back to the About box"; };

  photo.Click = [this] { photo_Click(); };
}

void FrmAuthor::Form_Load() {
  FrmAboutChess& about = *frmAboutChess;
  BelongTo(about);
  photo.Picture = about.photo.Picture();
  Form_Resize();
  about.Enabled = false;
}

void FrmAuthor::Form_Resize() {
  const FrmAboutChess& about = *frmAboutChess;
  Left = about.Left() + about.ClientLeft() + about.photo.Left() - ClientLeft() - photo.Left();
  Top = about.Top() + about.ClientTop() + about.photo.Top() - ClientTop() - photo.Top();
}

void FrmAuthor::Form_Activate() {
  const Color shadow = SystemColorOf(kButtonShadow);
  const Color face = SystemColorOf(kButtonFace);
  PaintGradient(picGrad, shadow, face, 1);
  PaintGradient(picSmalGrad, shadow, face, 1);
}

bool FrmAuthor::Form_KeyDown(Key key, int /*Shift*/) {
  const bool closes = key == Key::kEscape || key == Key::kEnter || key == Key::kSpace;
  if (closes) photo_Click();
  return closes;
}

void FrmAuthor::photo_Click() {
  frmAboutChess->Enabled = true;
  frmAboutChess->SetFocus();
  Unload(frmAuthor);
}

}  // namespace morva
