#include <algorithm>

#include "net/text.h"
#include "net/wire.h"
#include "platform/accessibility/announce.h"
#include "table/frm_chess.h"

namespace morva {

namespace {

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; });
  return text;
}

}  // namespace

void FrmChess::out(const std::string& s) {
  txtOut.Append("\r\n" + s);
  txtOut.SelStart = TextLog::kEnd;
}

void FrmChess::txtIn_KeyPress(int KeyAscii) {
  if (KeyAscii != 13) {
    PlayResourceSound(kKeySound);
    return;
  }
  const std::string line = Printable(SingleLine(txtIn.Text()));
  if (line.empty()) return;
  if (Lower(line) == "/clear") {
    txtOut.Text = "";
  } else {
    said_.push_back(line);
    out("<" + Nick + ">  " + line);
    Transmit(line, kWords);
  }
  txtIn.Text = "";
  recalled_ = said_.size();
  txtIn.SetFocus();
  PlayResourceSound(kLineSound);
}

bool FrmChess::txtIn_KeyDown(Key key, int Shift) {
  if (Shift != 0) return false;
  switch (key) {
    case Key::kPageUp:
      LeafThroughLog(-1);
      return true;
    case Key::kPageDown:
      LeafThroughLog(1);
      return true;
    case Key::kUp:
      if (recalled_ > 0) RecallLine(recalled_ - 1);
      return true;
    case Key::kDown:
      if (recalled_ < said_.size()) RecallLine(recalled_ + 1);
      return true;
    default:
      return false;
  }
}

void FrmChess::LeafThroughLog(int pages) {
  txtOut.ScrollPages(pages);
  const std::string shown = txtOut.ShownText();
  Announce(shown.empty() ? "The chat log is empty" : shown);
}

void FrmChess::RecallLine(std::size_t which) {
  if (recalled_ == said_.size()) unsaid_ = txtIn.Text;
  recalled_ = which;
  txtIn.Text = which == said_.size() ? unsaid_ : said_[which];
}

void FrmChess::cmdDefault_Click() {
  txtIn_KeyPress(13);
  txtIn.SetFocus();
}

void FrmChess::txtOut_GotFocus() {
  txtIn.SetFocus();
  txtIn.SelectAll();
}

void FrmChess::SendCanned(const CannedWord& canned) {
  Transmit(canned.word, kWords);
  Announce("Sent: " + canned.TextFrom(Nick));
  txtIn.SetFocus();
  if (canned.sound_here != kNoSound) PlayResourceSound(canned.sound_here);
}

}  // namespace morva
