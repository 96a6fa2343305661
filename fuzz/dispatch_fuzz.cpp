// Everything that can arrive on the line, from the reader to the squares. A byte 1E stands for a line that falls quiet.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/game.h"
#include "net/frm_control.h"

namespace {

constexpr char kQuiet = '\x1E';

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  morva::StartGame();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  morva::ClearTable();
  morva::MessageReader reader;
  int now = 0;
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  while (!rest.empty()) {
    const std::string_view piece = rest.substr(0, rest.find(kQuiet));
    reader.Bytes(piece, now);
    now += 1000;
    while (const auto message = reader.Next(now)) morva::frmControl->tcp.Message(*message);
    rest.remove_prefix(std::min(piece.size() + 1, rest.size()));
  }
  morva::CheckTable();
  return 0;
}
