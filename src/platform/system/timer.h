#pragma once

#include <functional>
#include <memory>

#include "platform/system/property.h"

class QTimer;

namespace morva {

/// Ticks again and again from the moment it is made. A tick takes at least 15 ms, one frame of a usual screen, however
/// short the Interval: steps of an animation are seen.
class Timer {
 public:
  explicit Timer(int interval_ms = 0);
  ~Timer();
  Property<int> Interval;  ///< milliseconds; 0 stops it; assigning starts the interval afresh
  Property<bool> Enabled;
  std::function<void()> Tick;

 private:
  void Start();
  std::unique_ptr<QTimer> timer_;
};

}  // namespace morva
