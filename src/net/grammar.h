#pragma once

#include <cstddef>
#include <string_view>

namespace morva {

/// How the front of a received text reads.
enum class Shape {
  kComplete,    ///< the first `length` bytes are a self-terminating message
  kIncomplete,  ///< a prefix that can still become complete
  kOpen,        ///< a complete message that more bytes can turn into another one
  kRunsToEnd,   ///< one message, or nonsense, together with all bytes up to the next quiet period
};

struct Reading {
  Shape shape;
  std::size_t length = 0;
};

/// Reads the front of `text`, which is not empty. `quiet` means that no more bytes follow for now, which decides an
/// open message. A complete message stays complete, with the same length, whatever follows.
Reading Read(std::string_view text, bool quiet = false);

/// How well a text parses as a sequence of messages, from worst to best.
enum class Fit {
  kNone,   ///< it does not, and no more bytes can change that
  kCut,    ///< the last message is cut
  kLine,   ///< the last message is a chat line, which can hold anything
  kWhole,  ///< the last message ends where the text ends
};

/// Of a longer text only this many bytes are parsed, and a message that this limit cuts does not count as cut. Enough
/// for two messages and a part of the third.
inline constexpr std::size_t kLookAhead = 16;

Fit FitOf(std::string_view text);

/// Whether the bytes held when the connection falls quiet are long enough for a message. `text` is not empty.
bool IsMessage(std::string_view text);

}  // namespace morva
