// Everything that can arrive on the line, from the reader to the squares. A byte 1E stands for a line that falls quiet.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/game.h"
#include "net/frm_control.h"

namespace {

constexpr char kQuiet = '\x1E';

void HandOut(morva::MessageReader& reader) {
  while (const auto message = reader.Next()) morva::frmControl->tcp.Message(*message);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  morva::StartGame();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  morva::ClearTable();
  morva::MessageReader reader;
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  while (!rest.empty()) {
    const std::string_view piece = rest.substr(0, rest.find(kQuiet));
    reader.Bytes(piece);
    HandOut(reader);
    reader.Quiet();
    HandOut(reader);
    rest.remove_prefix(std::min(piece.size() + 1, rest.size()));
  }
  morva::CheckTable();
  return 0;
}
