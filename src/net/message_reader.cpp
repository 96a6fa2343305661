#include "net/message_reader.h"

#include <algorithm>
#include <utility>

#include "net/grammar.h"
#include "net/wire.h"

namespace morva {

void MessageReader::Bytes(std::string_view bytes, std::int64_t now_ms) {
  last_byte_ = now_ms;
  if (swallowing_) return;
  held_ += bytes;
  Split(false);
  swallowing_ = held_.size() > max_message_;
  if (!swallowing_) return;
  held_.clear();
  perhaps_end_ = 0;
  in_board_line_ = false;
}

void MessageReader::End() {
  while (QuietNeeded() != 0) Quiet(kLastQuietMs);
}

std::optional<std::string> MessageReader::Next(std::int64_t now_ms) {
  while (QuietNeeded() != 0 && now_ms - last_byte_ >= QuietNeeded()) Quiet(now_ms - last_byte_);
  if (finished_.empty()) return std::nullopt;
  std::string message = std::move(finished_.front());
  finished_.pop_front();
  return message;
}

int MessageReader::WaitMs(std::int64_t now_ms) const {
  if (!finished_.empty()) return 0;
  const int needed = QuietNeeded();
  return needed == 0 ? -1 : static_cast<int>(std::clamp<std::int64_t>(last_byte_ + needed - now_ms, 0, needed));
}

// How long the connection must be quiet to decide about the held bytes; 0 if quiet decides nothing.
int MessageReader::QuietNeeded() const {
  if (swallowing_) return kLastQuietMs;
  if (held_.empty()) return after_board_ ? kQuietMs : 0;
  if (HasTail()) return FitOf(Tail()) == Fit::kCut ? kLongQuietMs : kQuietMs;
  if (held_.size() > kLongMessage) return perhaps_end_ == 0 ? kLongQuietMs : kLastQuietMs;
  return FitOf(held_) == Fit::kCut || Read(held_).shape == Shape::kIncomplete ? kLongQuietMs : kQuietMs;
}

void MessageReader::Quiet(std::int64_t ms) {
  if (HasTail()) {
    if (FitOf(Tail()) == Fit::kWhole) return Finish(perhaps_end_);
    perhaps_end_ = 0;
  } else if (held_.size() > kLongMessage && ms < kLastQuietMs) {
    perhaps_end_ = held_.size();
  } else {
    Split(true);
    Finish(held_.size());
    after_board_ = swallowing_ = false;
  }
}

// Moves complete messages from the held bytes to the finished ones.
void MessageReader::Split(bool quiet) {
  if (HasTail()) {
    const Fit fit = FitOf(Tail());
    const bool judged = Tail().size() > kLookAhead;
    if (fit == Fit::kNone || (judged && fit == Fit::kLine)) {
      perhaps_end_ = 0;
    } else if (judged) {
      Finish(perhaps_end_);
    }
  }
  std::string_view rest = held_;
  while (!rest.empty() && !in_board_line_) {
    if (after_board_) {
      const Fit fit = FitOf(rest);
      in_board_line_ = fit == Fit::kNone || (quiet && fit == Fit::kCut);
      if (in_board_line_ || (!quiet && rest.size() <= kLookAhead)) break;
    }
    const Reading reading = Read(rest, quiet);
    if (reading.shape != Shape::kComplete) break;
    finished_.emplace_back(rest.substr(0, reading.length));
    after_board_ = finished_.back().starts_with(kBoardHead);
    rest.remove_prefix(reading.length);
  }
  held_.erase(0, held_.size() - rest.size());
}

// Ends the held message after so many bytes.
void MessageReader::Finish(std::size_t length) {
  std::string message = held_.substr(0, length);
  held_.erase(0, length);
  if (!message.empty() && !in_board_line_ && IsMessage(message)) finished_.push_back(std::move(message));
  in_board_line_ = after_board_ = false;
  perhaps_end_ = 0;
}

}  // namespace morva
