#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace morva {

/// Splits the received bytes into messages. The protocol has neither lengths nor separators: some messages are
/// self-terminating ("me", "15236"), others (a chat line) last until the connection falls quiet. Times are milliseconds
/// of any monotonic clock.
///
/// The result depends on where the quiet periods fell, not on how the bytes were split into reads.
class MessageReader {
 public:
  static constexpr std::size_t kMaxMessage = std::size_t{1} << 20;

  /// `max_message` is the longest unfinished message kept, in bytes, at least the length of a board. A longer one is
  /// dropped, with all bytes up to the next quiet period.
  explicit MessageReader(std::size_t max_message = kMaxMessage) : max_message_(max_message) {}

  /// Takes received bytes, in chunks of any size. Next() must be called first if the connection was quiet before them.
  void Bytes(std::string_view bytes, std::int64_t now_ms);

  /// The connection is closed: the held bytes become a message if they are long enough for one.
  void End();

  /// The next finished message with its type character, or nothing when there is none yet. A message is never empty and
  /// never begins with 5 to 9; it can still be malformed, which its receiver must check.
  std::optional<std::string> Next(std::int64_t now_ms);

  /// Milliseconds until Next() can return more without further bytes; -1 if it can't.
  int WaitMs(std::int64_t now_ms) const;

  /// The number of bytes held of an unfinished message, at most `max_message`.
  std::size_t Held() const { return held_.size(); }

 private:
  int QuietNeeded() const;
  void Quiet(std::int64_t ms);
  void Split(bool quiet);
  void Finish(std::size_t length);
  bool HasTail() const { return perhaps_end_ != 0 && held_.size() > perhaps_end_; }
  std::string_view Tail() const { return std::string_view(held_).substr(perhaps_end_); }

  std::size_t max_message_;
  std::deque<std::string> finished_;
  std::string held_;             ///< one unfinished message
  std::int64_t last_byte_ = 0;   ///< when its last byte arrived
  std::size_t perhaps_end_ = 0;  ///< length of a long message up to a quiet period that can be its end; 0: none
  bool after_board_ = false;     ///< the last message was a board whose line can continue
  bool in_board_line_ = false;   ///< held_ continues such a line
  bool swallowing_ = false;      ///< the message grew too long: all bytes up to the next quiet period are dropped
};

}  // namespace morva
