#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace morva {

/// The messages that wait to be sent, one write each. Behind a message that only quiet ends, the next one waits until
/// the first is acknowledged and a pause has passed, so that the receiver does not read both as one.
///
/// Every message is sent, and in order, with one exception for the sake of play: a move, a turn or another action on
/// the board waits no longer than a second behind chat lines, not counting transmission. It then overtakes those that
/// still wait.
///
/// Times are milliseconds of any monotonic clock.
class SendQueue {
 public:
  /// Adds `message` at the end. An empty one is ignored.
  void Put(std::string message, std::int64_t now_ms);

  /// Removes and returns the message to write now; nothing if there is none or it is too early.
  std::optional<std::string> Next(std::int64_t now_ms);

  /// Whether the next message waits for Acknowledged().
  bool AwaitsAcknowledgement() const { return written_at_.has_value(); }

  /// The other side's system has received all that was written. `round_trip_ms` is the shortest round trip of the
  /// connection; 0 if unknown.
  void Acknowledged(std::int64_t now_ms, int round_trip_ms);

  /// Milliseconds until there is something to do: to send the next message, or to poll for the acknowledgement, at
  /// growing intervals. -1 if there is nothing.
  int WaitMs(std::int64_t now_ms) const;

  bool Empty() const { return waiting_.empty(); }

 private:
  struct Waiting {
    std::string message;
    std::int64_t since;
  };

  std::size_t Chosen(std::int64_t now_ms) const;

  std::deque<Waiting> waiting_;
  std::optional<std::int64_t> written_at_;  ///< when the last message that only quiet ends was, if unacknowledged
  std::int64_t free_at_ = 0;                ///< when its pause is over
  int pause_ = 0;                           ///< after it
};

}  // namespace morva
