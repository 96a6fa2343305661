#include "net/message_reader.h"

#include <utility>

#include "net/wire.h"

namespace morva {
namespace {

constexpr std::size_t kLeastPayload = 4;  // of a move or a change

enum class Shape {
  kComplete,    // the first `length` bytes are a message that ends by itself
  kIncomplete,  // a beginning that can still become complete
  kRunsToEnd,   // one message with all that follows, up to the quiet
};

struct Reading {
  Shape shape;
  std::size_t length = 0;
};

constexpr Reading Complete(std::size_t length) { return {Shape::kComplete, length}; }
constexpr Reading kIncomplete{Shape::kIncomplete};
constexpr Reading kRunsToEnd{Shape::kRunsToEnd};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// How many digits there are from `at` on, counting no further than `most`.
std::size_t Digits(std::string_view text, std::size_t at, std::size_t most) {
  std::size_t count = 0;
  while (count < most && at + count < text.size() && IsDigit(text[at + count])) ++count;
  return count;
}

// A message that is always the same text.
Reading Word(std::string_view text, std::string_view word) {
  if (text.starts_with(word)) return Complete(word.size());
  return word.starts_with(text) ? kIncomplete : kRunsToEnd;
}

// "1" + four digits | "1__" + 64 bytes | "1new" | "1newc" | "1clear"
Reading Move(std::string_view text) {
  if (text.size() == 1) return kIncomplete;
  switch (text[1]) {
    case 'n':
      if (text == "1new") return kRunsToEnd;
      if (text.starts_with("1newc")) return Complete(5);
      return Word(text, "1new");
    case 'c':
      return Word(text, "1clear");
    case '_':
      if (text.starts_with(kBoardHead) && text.size() >= kBoardBytes) return Complete(kBoardBytes);
      return text.size() < kBoardHead.size() || text.starts_with(kBoardHead) ? kIncomplete : kRunsToEnd;
    default:
      const std::size_t digits = Digits(text, 1, 4);
      if (digits == 4) return Complete(5);
      return 1 + digits == text.size() ? kIncomplete : kRunsToEnd;
  }
}

// "3" + 0..63 without a leading zero
Reading Trash(std::string_view text) {
  if (text.size() == 1) return kIncomplete;
  const char first = text[1];
  if (!IsDigit(first)) return kRunsToEnd;
  if (first == '0' || first > '6') return Complete(2);
  if (text.size() == 2) return kRunsToEnd;
  const char second = text[2];
  const bool two_digits = IsDigit(second) && (first < '6' || second <= '3');
  return Complete(two_digits ? 3 : 2);
}

// "4" + two digits + one digit + ("0" | "16777215")
Reading Change(std::string_view text) {
  const std::size_t digits = Digits(text, 1, 3);
  if (1 + digits == text.size()) return kIncomplete;
  if (digits < 3) return kRunsToEnd;
  const std::string_view color = text.substr(4);
  if (color.front() == '0') return Complete(5);
  const Reading white = Word(color, "16777215");
  return white.shape == Shape::kComplete ? Complete(4 + white.length) : white;
}

// Looks at no more than the first kBoardBytes of `text`, which is not empty, so a growing line costs nothing.
Reading Read(std::string_view text) {
  switch (text.front()) {
    case '0':
    case '2':
      return kRunsToEnd;
    case '1':
      return Move(text);
    case '3':
      return Trash(text);
    case '4':
      return Change(text);
    case 'm':
      return Word(text, "me");
    case 'y':
      return Word(text, "you");
    default:
      return kRunsToEnd;
  }
}

// Whether what is held when the line falls quiet is long enough to mean anything.
bool IsMessage(std::string_view text) {
  if (text.size() == 1) return text == "2";  // all others would be without content; a nick may be empty
  if (text.front() >= '5' && text.front() <= '9') return false;
  if (Read(text).shape != Shape::kIncomplete || !IsDigit(text.front())) return true;
  return text.size() > kLeastPayload && !text.starts_with(kBoardHead);
}

}  // namespace

void MessageReader::Bytes(std::string_view bytes) {
  if (swallowing_) return;
  held_ += bytes;
  std::string_view rest = held_;
  while (!rest.empty()) {
    const Reading reading = Read(rest);
    if (reading.shape != Shape::kComplete) break;
    finished_.emplace_back(rest.substr(0, reading.length));
    after_board_ = finished_.back().starts_with(kBoardHead);
    rest.remove_prefix(reading.length);
  }
  swallowing_ = rest.size() > max_message_;
  if (swallowing_) rest = {};
  held_.erase(0, held_.size() - rest.size());
}

std::optional<std::string> MessageReader::Next() {
  if (finished_.empty()) return std::nullopt;
  std::string message = std::move(finished_.front());
  finished_.pop_front();
  return message;
}

int MessageReader::QuietNeeded() const {
  if (swallowing_) return kLongQuietMs;
  if (held_.empty()) return after_board_ ? kQuietMs : 0;
  if (Read(held_).shape == Shape::kIncomplete || held_.size() > kLongMessage) return kLongQuietMs;
  return kQuietMs;
}

void MessageReader::Quiet() {
  const bool rest_of_board = after_board_ && !held_.empty() && !IsDigit(held_.front());
  if (!held_.empty() && !rest_of_board && IsMessage(held_)) finished_.push_back(std::move(held_));
  held_.clear();
  after_board_ = swallowing_ = false;
}

}  // namespace morva
