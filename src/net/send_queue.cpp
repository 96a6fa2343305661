#include "net/send_queue.h"

#include <algorithm>
#include <utility>

#include "net/wire.h"

namespace morva {
namespace {

// Well over the quiet that the other side waits for: a line that hurries one message and holds up the other takes some
// of the pause away, and so does a busy computer over there.
constexpr std::int64_t kPauseMs = kQuietMs + 80;
constexpr std::int64_t kLongPauseMs = kLongQuietMs + 50;

}  // namespace

void SendQueue::Put(std::string message) {
  if (!message.empty()) waiting_.push_back(std::move(message));
}

std::optional<std::string> SendQueue::Next(std::int64_t now_ms) {
  if (WaitMs(now_ms) != 0) return std::nullopt;
  std::string message = std::move(waiting_.front());
  waiting_.pop_front();
  if (RunsToEnd(message)) free_at_ = now_ms + (message.size() > kLongMessage ? kLongPauseMs : kPauseMs);
  return message;
}

int SendQueue::WaitMs(std::int64_t now_ms) const {
  if (waiting_.empty()) return -1;
  if (!free_at_) return 0;
  return static_cast<int>(std::clamp<std::int64_t>(*free_at_ - now_ms, 0, kLongPauseMs));
}

}  // namespace morva
