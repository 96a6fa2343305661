#pragma once

#include <functional>
#include <memory>

#include "platform/system/property.h"

namespace morva {

/// Has the event loop call `routine` in one of its next turns, on the window's thread. For any thread.
void Post(std::function<void()> routine);

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
  class Impl;
  std::unique_ptr<Impl> impl_;
};

/// Updates what a control shows once per turn of the event loop, however often it was changed.
class ShownLater {
 public:
  explicit ShownLater(std::function<void()> show);
  ~ShownLater();
  /// Requests the update for the next turn.
  void Request();
  bool Requested() const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace morva
