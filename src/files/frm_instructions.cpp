#include "files/frm_instructions.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "files/file_menus.h"
#include "net/text.h"
#include "platform/application.h"
#include "platform/system/plain_files.h"
#include "table/frm_tool_window.h"

namespace morva {

namespace {

constexpr char kFileName[] = "morva.txt";
constexpr std::size_t kMaxBytes = std::size_t{16} << 20;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The tab is the only control character that stays in a line.
void AppendLine(std::string& text, std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  for (std::size_t tab = line.find('\t'); tab != std::string_view::npos; tab = line.find('\t')) {
    text += TextOf(line.substr(0, tab)) + '\t';
    line.remove_prefix(tab + 1);
  }
  text += TextOf(line) + "\r\n";
}

std::string TextOfFile(std::string_view bytes) {
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  std::string text;
  while (!bytes.empty()) {
    const std::string_view line = bytes.substr(0, bytes.find('\n'));
    AppendLine(text, line);
    bytes.remove_prefix(std::min(line.size() + 1, bytes.size()));
  }
  return text;
}

}  // namespace

FrmInstructions::FrmInstructions()
    : Form({.caption = "Instructions",
            .frame = FormStyle::Frame::kSizable,
            .scale_width = 7095,
            .scale_height = 6255,
            .maximise_box = true,
            .on_task_bar = true,
            .escape_closes = true}) {
  Place({
      {textbox, 0, 0, 7095, 6255},
  });
  textbox.SpokenName = "Instructions";
}

void UseDataFolder() {
  if (FileExists(kFileName)) return;
  for (const char* place : {MORVA_DATA_FROM_PROGRAM, "."}) {
    const std::filesystem::path folder = std::filesystem::path(App::Path()) / place;
    std::error_code failed;
    if (!std::filesystem::exists(folder / kFileName, failed)) continue;
    std::filesystem::current_path(folder, failed);
    return;
  }
}

void FrmInstructions::Form_Load() { textbox.Text = TextOfFile(ReadFile(kFileName, kMaxBytes).value_or("")); }

void FrmInstructions::Form_Resize() {
  textbox.Width = ScaleWidth();
  textbox.Height = ScaleHeight();
}

void FrmInstructions::Form_Unload() {
  frmChess->Enabled = true;
  frmToolWindow->Enabled = true;
  frmToolWindow->frmext.ontop = frmToolWindow->mnuAlways.Checked();
}

void mnuInstructions_Click(FrmChess& window) {
  if (!FileExists(kFileName)) return;
  window.Enabled = false;
  frmToolWindow->Enabled = false;
  frmToolWindow->frmext.ontop = false;
  frmInstructions->Show();
}

}  // namespace morva
