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
  kMenu,  ///< the menu key, or Shift+F10 without a word of the Shift
  kF6,
  kT
};

/// What is held down with a key: a sum of these.
inline constexpr int kShiftKey = 1;
inline constexpr int kCtrlKey = 2;
inline constexpr int kAltKey = 4;

/// Hears of a key before the control or the window does with it what its kind does. True: the handler has acted, and
/// nothing else happens.
using KeyHandler = std::function<bool(Key key, int Shift)>;

}  // namespace morva
