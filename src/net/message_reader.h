#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace morva {

/// Finds the messages in what arrives on the line. The wire has no lengths and no separators: some messages end by
/// themselves ("me", "15236"), others run to the end of what is read (a chat line), and only a quiet line tells that
/// they are over. The reader has no clock; its owner starts a timer after every Bytes() and calls Quiet() when no byte
/// has come for QuietNeeded() milliseconds.
///
/// What comes out does not depend on how the bytes were cut into reads, only on where the quiet fell.
class MessageReader {
 public:
  static constexpr std::size_t kMaxMessage = std::size_t{1} << 20;

  /// `max_message` is the longest unfinished message kept, in bytes, at least the length of a board. A longer one is
  /// dropped, with all that follows up to the next quiet.
  explicit MessageReader(std::size_t max_message = kMaxMessage) : max_message_(max_message) {}

  /// Takes what arrived, any bytes, in pieces of any size.
  void Bytes(std::string_view bytes);

  /// The next finished message with its type character, or nothing when there is none yet. A message is never empty and
  /// never begins with 5 to 9; it may still be malformed, which is for its reader to judge.
  std::optional<std::string> Next();

  /// How long the line must be quiet, in milliseconds, before Quiet() is called: 20 or 250, and 0 when there is no
  /// need.
  int QuietNeeded() const;

  /// The line has been quiet for that long, or is closed: what is held becomes a message if it is long enough for one,
  /// and the next byte begins a new message.
  void Quiet();

  /// How many bytes of an unfinished message are held, at most `max_message`.
  std::size_t Held() const { return held_.size(); }

 private:
  std::size_t max_message_;
  std::deque<std::string> finished_;
  std::string held_;          ///< one unfinished message
  bool after_board_ = false;  ///< the last message was a board whose line may go on
  bool swallowing_ = false;   ///< the held message grew too long: all is dropped up to the next quiet
};

}  // namespace morva
