#pragma once

#include <functional>
#include <memory>

namespace morva {

/// What a control has been told many times in one turn of the event loop is shown once, before the next.
class ShownLater {
 public:
  explicit ShownLater(std::function<void()> show);
  ~ShownLater();
  /// Asks for it; asked again, it is still shown once.
  void Request();
  bool Requested() const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace morva
