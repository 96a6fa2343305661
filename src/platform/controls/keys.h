#pragma once

#include <functional>

namespace morva {

/// The keys that a handler can tell apart; all others are kOther.
enum class Key {
  kOther,
  kLeft,
  kUp,
  kRight,
  kDown,
  kHome,
  kEnd,
  kPageUp,
  kPageDown,
  kSpace,
  kEnter,
  kEscape,
  kMenu,  ///< the menu key, or Shift+F10, then without kShiftKey
  kF6,
  kT
};

/// The modifier keys of a key: a sum of these.
inline constexpr int kShiftKey = 1;
inline constexpr int kCtrlKey = 2;
inline constexpr int kAltKey = 4;

/// Told of a key before the control or the window handles it. True: the handler has acted, and nothing else happens.
using KeyHandler = std::function<bool(Key key, int Shift)>;

}  // namespace morva
