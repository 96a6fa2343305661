#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace morva {

/// Finds the messages in what arrives on the line. The wire has no lengths and no separators: some messages end by
/// themselves ("me", "15236"), others run to the end of what is read (a chat line), and only a quiet line tells that
/// they are over. Times are milliseconds of any clock that never goes back.
///
/// What comes out does not depend on how the bytes were cut into reads, only on where the quiet fell.
class MessageReader {
 public:
  static constexpr std::size_t kMaxMessage = std::size_t{1} << 20;

  /// `max_message` is the longest unfinished message kept, in bytes, at least the length of a board. A longer one is
  /// dropped, with all that follows up to the next quiet.
  explicit MessageReader(std::size_t max_message = kMaxMessage) : max_message_(max_message) {}

  /// Takes what arrived, any bytes, in pieces of any size. Was the line quiet before it, Next() has to hear of that
  /// first.
  void Bytes(std::string_view bytes, std::int64_t now_ms);

  /// The line is closed: what is held becomes a message if it is long enough for one.
  void End();

  /// The next finished message with its type character, or nothing when there is none yet. A message is never empty and
  /// never begins with 5 to 9; it may still be malformed, which is for its reader to judge.
  std::optional<std::string> Next(std::int64_t now_ms);

  /// In how many milliseconds Next() may know more though no byte has come; -1 when it won't.
  int WaitMs(std::int64_t now_ms) const;

  /// How many bytes of an unfinished message are held, at most `max_message`.
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
  std::int64_t last_byte_ = 0;   ///< when it came
  std::size_t perhaps_end_ = 0;  ///< so much of a long message came before some quiet, which may be its end; 0: none
  bool after_board_ = false;     ///< the last message was a board whose line may go on
  bool in_board_line_ = false;   ///< what is held is the rest of such a line
  bool swallowing_ = false;      ///< the held message grew too long: all is dropped up to the next quiet
};

}  // namespace morva
