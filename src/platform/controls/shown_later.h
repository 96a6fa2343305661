#pragma once

#include <functional>
#include <memory>

namespace morva {

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
