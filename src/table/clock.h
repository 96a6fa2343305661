#pragma once

#include <string>

namespace morva {

/// The time since the table opened, or since the last new game.
struct Clock {
  int sec = 0, min = 0, hour = 0;

  void AddSecond();
  /// "00:00:00"; from 100 hours on the hours have more digits.
  std::string Text() const;
};

}  // namespace morva
