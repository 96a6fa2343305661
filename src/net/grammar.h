#pragma once

#include <cstddef>
#include <string_view>

namespace morva {

/// What stands at the front of a text from the line.
enum class Shape {
  kComplete,    ///< the first `length` bytes are a message that ends by itself
  kIncomplete,  ///< a beginning that can still become complete
  kOpen,        ///< a message as it stands, but what follows can make it another one
  kRunsToEnd,   ///< one message, or nothing with sense, with all that follows up to the quiet
};

struct Reading {
  Shape shape;
  std::size_t length = 0;
};

/// Reads the front of `text`, which is not empty. `quiet`: nothing follows for the time being, so what is open is
/// decided. What is complete stays so, with the same length, whatever follows.
Reading Read(std::string_view text, bool quiet = false);

/// How well a text reads as messages from its front to its end, from worst to best.
enum class Fit {
  kNone,   ///< it doesn't, nor will it with more behind it
  kCut,    ///< the last one breaks off
  kLine,   ///< the last one is a chat line, which takes everything
  kWhole,  ///< they end where it ends
};

/// Of a longer text than this it is the front that counts, and a message cut by its end is none cut. Enough for two
/// messages and a part of the third.
inline constexpr std::size_t kLookAhead = 16;

Fit FitOf(std::string_view text);

/// Whether what is held when the line falls quiet is long enough to mean anything. `text` is not empty.
bool IsMessage(std::string_view text);

}  // namespace morva
