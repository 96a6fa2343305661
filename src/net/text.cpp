#include "net/text.h"

#include <cstddef>
#include <optional>

namespace morva {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Removes one character from the front of `text`, which is not empty, and returns it. Of an invalid one it removes a
// byte and returns nothing.
std::optional<char32_t> TakeCharacter(std::string_view& text) {
  const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned lead = byte(0);
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC0 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF8 ? 4
                                           : 0;
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};  // by length; less is an overlong form

  bool valid = length > 0 && length <= text.size();
  char32_t code = length > 1 ? lead & (0x7Fu >> length) : lead;
  for (std::size_t i = 1; valid && i < length; ++i) {
    valid = (byte(i) & 0xC0) == 0x80;
    code = code << 6 | (byte(i) & 0x3Fu);
  }
  valid = valid && code >= kLeast[length] && code <= 0x10FFFF && !(code >= 0xD800 && code <= 0xDFFF);
  text.remove_prefix(valid ? length : 1);
  return valid ? std::optional(code) : std::nullopt;
}

void Append(std::string& text, char32_t code) {
  const auto tail = [code](int shift) { return static_cast<char>(0x80 | (code >> shift & 0x3F)); };
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += {static_cast<char>(0xC0 | code >> 6), tail(0)};
  } else if (code < 0x10000) {
    text += {static_cast<char>(0xE0 | code >> 12), tail(6), tail(0)};
  } else {
    text += {static_cast<char>(0xF0 | code >> 18), tail(12), tail(6), tail(0)};
  }
}

bool IsValid(std::string_view text) {
  while (!text.empty()) {
    if (!TakeCharacter(text)) return false;
  }
  return true;
}

bool IsControl(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0x200E || c == 0x200F || (c >= 0x2028 && c <= 0x202E) ||
         (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF;
}

}  // namespace

std::string BytesOf(std::string_view text) {
  std::string utf8;
  std::string latin1;
  bool fits = true;
  while (!text.empty()) {
    const char32_t code = TakeCharacter(text).value_or(kReplacement);
    Append(utf8, code);
    fits = fits && code <= 0xFF;
    if (fits) latin1 += static_cast<char>(code);
  }
  return fits && !IsValid(latin1) ? latin1 : utf8;  // for ASCII alone the two are the same
}

std::string TextOf(std::string_view bytes) {
  if (IsValid(bytes)) return Printable(bytes);
  std::string text;
  for (const char c : bytes) Append(text, static_cast<unsigned char>(c));
  return Printable(text);
}

std::string SingleLine(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool blank = text[i] == '\t' || text[i] == '\n' || text[i] == '\r';
    result += blank ? ' ' : text[i];
    if (text.substr(i).starts_with("\r\n")) ++i;
  }
  return result;
}

std::string Shortened(std::string_view text) {
  constexpr int kMostCharacters = 40;
  std::string_view rest = text;
  for (int left = kMostCharacters; left > 0 && !rest.empty(); --left) TakeCharacter(rest);
  const std::string_view taken = text.substr(0, text.size() - rest.size());
  return rest.empty() ? std::string(text) : std::string(taken) + "…";
}

std::string Printable(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const char32_t code = TakeCharacter(text).value_or(kReplacement);
    Append(result, IsControl(code) ? kReplacement : code);
  }
  return result;
}

}  // namespace morva
