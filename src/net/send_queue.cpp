#include "net/send_queue.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace morva {
namespace {

// The other side takes 20 ms of quiet for the end. A line that hurries one message and holds up the other takes some of
// the pause away, and so does a busy computer over there.
constexpr std::int64_t kPauseMs = 100;
// The other side waits longer for the end of a long message, which may come in many pieces.
constexpr std::size_t kLongBytes = 512;
constexpr std::int64_t kLongPauseMs = 300;

constexpr std::size_t kPlainBoardBytes = 3 + 64;

}  // namespace

bool RunsToEnd(std::string_view message) {
  if (message.empty()) return false;
  const char type = message.front();
  return type == '0' || type == '2' || type == '3' || (message.starts_with("1__") && message.size() > kPlainBoardBytes);
}

void SendQueue::Put(std::string message) {
  if (!message.empty()) waiting_.push_back(std::move(message));
}

std::optional<std::string> SendQueue::Next(std::int64_t now_ms) {
  if (WaitMs(now_ms) != 0) return std::nullopt;
  std::string message = std::move(waiting_.front());
  waiting_.pop_front();
  if (RunsToEnd(message)) free_at_ = now_ms + (message.size() > kLongBytes ? kLongPauseMs : kPauseMs);
  return message;
}

int SendQueue::WaitMs(std::int64_t now_ms) const {
  if (waiting_.empty()) return -1;
  if (!free_at_) return 0;
  return static_cast<int>(std::clamp<std::int64_t>(*free_at_ - now_ms, 0, kLongPauseMs));
}

}  // namespace morva
