#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace morva {

/// What is waiting to be sent, in order, one write a message. After a message that runs to the end of what is read the
/// next one waits for 100 ms, after a long one for 300, so that they are not read as one. Times are
/// milliseconds of any clock that never goes back.
class SendQueue {
 public:
  /// Adds `message` at the end. An empty one is ignored.
  void Put(std::string message);

  /// Takes the message to write now; nothing when there is none or it is too early for it.
  std::optional<std::string> Next(std::int64_t now_ms);

  /// Milliseconds until the next message may leave: 0 when it may now, -1 when there is none.
  int WaitMs(std::int64_t now_ms) const;

  bool Empty() const { return waiting_.empty(); }

 private:
  std::deque<std::string> waiting_;
  std::optional<std::int64_t> free_at_;  ///< when the last pause is over
};

}  // namespace morva
