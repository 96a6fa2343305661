// Opens the bytes as a game file and holds the board against what its first line says.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

#include "files/file_menus.h"
#include "fuzz/game.h"

namespace {

std::string FileName() { return "/dev/shm/morva_game_file_" + std::to_string(getpid()); }

// What stands on a square after a letter, as its Tag has it.
std::string TagOf(unsigned char letter) { return std::to_string(letter > 109 ? letter - 110 : letter - 100); }

bool HasPiece(int code) { return code >= 1 && code <= 8; }

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  morva::StartGame();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using morva::frmChess;
  using morva::Require;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::string name = FileName();
  std::ofstream(name, std::ios::binary) << bytes;

  morva::ClearTable();
  OpenGame(*frmChess, name);
  unlink(name.c_str());

  std::string_view line = bytes.substr(0, bytes.find('\n'));
  if (line.size() < bytes.size() && line.ends_with('\r')) line.remove_suffix(1);
  for (std::size_t i = 0; i < 64; ++i) {
    const auto& square = frmChess->squ(static_cast<int>(i));
    Require(square.Tag == (i < line.size() ? TagOf(static_cast<unsigned char>(line[i])) : "0"));
    const int code = morva::Val(square.Tag);
    Require(square.Strokes().empty() != HasPiece(code));
    if (HasPiece(code)) Require(square.ForeColor == (line[i] < 'n' ? morva::kBlack : morva::kWhite));
  }
  morva::CheckTable();
  return 0;
}
