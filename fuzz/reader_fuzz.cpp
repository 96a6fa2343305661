// Cuts a stretch of bytes in two ways and holds the messages that come out against each other, then reads the same
// bytes as text. The first byte says how many bytes of plan follow; each byte of the plan is the size of a read, and
// whether the line falls quiet behind it. A first byte from 128 on makes the longest message a short one.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "net/message_reader.h"
#include "net/text.h"

namespace {

using morva::MessageReader;
using Messages = std::vector<std::string>;

void Require(bool holds) {
  if (!holds) __builtin_trap();
}

void Drain(MessageReader& reader, Messages& messages) {
  while (auto message = reader.Next()) messages.push_back(*message);
}

void CheckSame(const MessageReader& one, const MessageReader& other, std::size_t max_message) {
  Require(one.Held() == other.Held() && one.Held() <= max_message);
  const int quiet = one.QuietNeeded();
  Require(quiet == other.QuietNeeded());
  Require(quiet == 0 || quiet == 20 || quiet == 250);
  Require(quiet != 0 || one.Held() == 0);
}

// Every message comes from its own place in the bytes, and alone on the line it is read as itself.
void CheckMessages(const Messages& messages, std::string_view bytes) {
  MessageReader alone;
  std::size_t at = 0;
  for (const std::string& message : messages) {
    Require(!message.empty() && (message[0] < '5' || message[0] > '9'));
    at = bytes.find(message, at);
    Require(at != std::string_view::npos);
    at += message.size();
    alone.Bytes(message);
    alone.Quiet();
    Require(alone.Next() == message && !alone.Next());
  }
}

void CheckReader(std::string_view plan, std::string_view bytes, std::size_t max_message) {
  MessageReader whole(max_message);
  MessageReader cut(max_message);
  Messages from_whole;
  Messages from_cut;
  std::size_t stretch = 0;
  std::size_t at = 0;
  for (std::size_t step = 0; at < bytes.size(); ++step) {
    const auto order = plan.empty() ? 1u : static_cast<unsigned char>(plan[step % plan.size()]);
    const std::string_view piece = bytes.substr(at, order % 64 + 1);
    cut.Bytes(piece);
    if (order % 3 == 0) Drain(cut, from_cut);
    at += piece.size();
    if (order < 192 && at < bytes.size()) continue;
    whole.Bytes(bytes.substr(stretch, at - stretch));
    CheckSame(whole, cut, max_message);
    whole.Quiet();
    cut.Quiet();
    CheckSame(whole, cut, max_message);
    Require(whole.QuietNeeded() == 0);
    stretch = at;
  }
  Drain(whole, from_whole);
  Drain(cut, from_cut);
  Require(from_whole == from_cut);
  CheckMessages(from_whole, bytes);
}

void CheckPrintable(const std::string& text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = [&](std::size_t k) { return k < text.size() ? static_cast<unsigned char>(text[k]) : 0u; };
    Require(byte(i) >= 0x20 && byte(i) != 0x7F);
    Require(!(byte(i) == 0xC2 && byte(i + 1) < 0xA0));
    if (byte(i) == 0xE2 && byte(i + 1) == 0x80) {
      Require(byte(i + 2) != 0x8E && byte(i + 2) != 0x8F && !(byte(i + 2) >= 0xA8 && byte(i + 2) <= 0xAE));
    }
    Require(!(byte(i) == 0xE2 && byte(i + 1) == 0x81 && byte(i + 2) >= 0xA6 && byte(i + 2) <= 0xA9));
    Require(!(byte(i) == 0xEF && byte(i + 1) == 0xBB && byte(i + 2) == 0xBF));
  }
}

void CheckText(std::string_view bytes) {
  const std::string text = morva::TextOf(bytes);
  CheckPrintable(text);
  Require(morva::Printable(text) == text);
  Require(morva::TextOf(morva::BytesOf(text)) == text);
  CheckPrintable(morva::Printable(bytes));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  std::string_view input(reinterpret_cast<const char*>(data), size);
  const unsigned head = data[0];
  input.remove_prefix(1);
  const std::string_view plan = input.substr(0, head % 16);
  const std::string_view bytes = input.substr(plan.size());
  CheckReader(plan, bytes, head < 128 ? MessageReader::kMaxMessage : 100);
  CheckText(bytes);
  return 0;
}
