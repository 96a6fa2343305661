#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace morva {

/// What is waiting to be sent, one write a message. Behind a message that runs to the end of what is read the next one
/// waits until the other side's system has the first and a pause has passed, so that they are not read as one.
///
/// Every message leaves, in the order in which they were put, but for one exception for the sake of play: a move, a turn
/// or another action on the board does not wait behind chat lines for more than a second, beyond what the connection
/// itself takes. It leaves before those that are still here then.
///
/// Times are milliseconds of any clock that never goes back.
class SendQueue {
 public:
  /// Adds `message` at the end. An empty one is ignored.
  void Put(std::string message, std::int64_t now_ms);

  /// Takes the message to write now; nothing when there is none or it is too early for it.
  std::optional<std::string> Next(std::int64_t now_ms);

  /// Whether the next message waits to hear of Acknowledged().
  bool AwaitsAcknowledgement() const { return written_at_.has_value(); }

  /// All that was written is with the other side's system. `round_trip_ms` is the least time for which the line carries
  /// bytes there and the acknowledgement back; 0 where it isn't known.
  void Acknowledged(std::int64_t now_ms, int round_trip_ms);

  /// Milliseconds until there is something to do: to take the next message, or to see about the acknowledgement, which
  /// is looked for less and less often. -1 when there is nothing.
  int WaitMs(std::int64_t now_ms) const;

  bool Empty() const { return waiting_.empty(); }

 private:
  struct Waiting {
    std::string message;
    std::int64_t since;
  };

  std::size_t Chosen(std::int64_t now_ms) const;

  std::deque<Waiting> waiting_;
  std::optional<std::int64_t> written_at_;  ///< the last message that runs to the end, not acknowledged yet
  std::int64_t free_at_ = 0;                ///< when its pause is over
  int pause_ = 0;                           ///< behind it
};

}  // namespace morva
