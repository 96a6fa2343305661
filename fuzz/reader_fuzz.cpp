// Cuts a stretch of bytes in two ways and holds the messages that come out against each other, then reads the same
// bytes as text. The first byte says how many bytes of plan follow; each byte of the plan is the size of a read, and
// how long the line falls quiet behind it. A first byte from 128 on makes the longest message a short one.

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

constexpr int kOver = 600;  // ms of quiet after which nothing is open

void Drain(MessageReader& reader, Messages& messages, int now) {
  while (auto message = reader.Next(now)) messages.push_back(*message);
}

// Every message comes from its own place in the bytes, and alone on the line it is read as itself.
void CheckMessages(const Messages& messages, std::string_view bytes) {
  std::size_t at = 0;
  for (const std::string& message : messages) {
    Require(!message.empty() && (message[0] < '5' || message[0] > '9'));
    at = bytes.find(message, at);
    Require(at != std::string_view::npos);
    at += message.size();
    MessageReader alone;
    alone.Bytes(message, 0);
    Require(alone.Next(kOver) == message && !alone.Next(kOver));
  }
}

void CheckReader(std::string_view plan, std::string_view bytes, std::size_t max_message) {
  MessageReader whole(max_message);
  MessageReader cut(max_message);
  Messages from_whole;
  Messages from_cut;
  std::size_t stretch = 0;
  std::size_t at = 0;
  int now = 0;
  for (std::size_t step = 0; at < bytes.size(); ++step) {
    const auto order = plan.empty() ? 1u : static_cast<unsigned char>(plan[step % plan.size()]);
    const std::string_view piece = bytes.substr(at, order % 64 + 1);
    cut.Bytes(piece, now);
    if (order % 3 == 0) Drain(cut, from_cut, now);
    at += piece.size();
    if (order < 128 && at < bytes.size()) continue;
    whole.Bytes(bytes.substr(stretch, at - stretch), now);
    stretch = at;
    now += order < 160 ? 20 : order < 192 ? 250 : kOver;
    Drain(whole, from_whole, now);
    Drain(cut, from_cut, now);
    Require(whole.Held() == cut.Held() && whole.Held() <= max_message);
    Require(whole.WaitMs(now) == cut.WaitMs(now) && whole.WaitMs(now) <= kOver);
    Require(whole.WaitMs(now) > 0 || whole.Held() == 0);
  }
  for (MessageReader* reader : {&whole, &cut}) {
    reader->End();
    Require(reader->WaitMs(now) <= 0 && reader->Held() == 0);
  }
  Drain(whole, from_whole, now);
  Drain(cut, from_cut, now);
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
