#include "net/send_queue.h"

#include <algorithm>
#include <utility>

#include "net/wire.h"

namespace morva {
namespace {

// Well above the quiet that the receiver waits for: jitter on the way shortens a pause, and so does a busy computer on
// the other side.
constexpr int kPauseMs = kQuietMs + 80;
constexpr int kLongPauseMs = kLastQuietMs + 100;

// The round trip is a pause for the receiver, too, but the next one can be shorter: no more than this of it counts.
constexpr int kMaxRoundTripMs = 50;

constexpr std::int64_t kMaxWaitBehindWordsMs = 900;

constexpr int kLongestPollMs = 1000;

int PauseBehind(const std::string& message) {
  if (!RunsToEnd(message)) return 0;
  return message.size() > kLongMessage ? kLongPauseMs : kPauseMs;
}

bool IsWords(const std::string& message) { return message.front() == '0'; }

}  // namespace

void SendQueue::Put(std::string message, std::int64_t now_ms) {
  if (!message.empty()) waiting_.push_back({std::move(message), now_ms});
}

std::optional<std::string> SendQueue::Next(std::int64_t now_ms) {
  if (waiting_.empty() || AwaitsAcknowledgement() || now_ms < free_at_) return std::nullopt;
  const auto chosen = waiting_.begin() + static_cast<std::ptrdiff_t>(Chosen(now_ms));
  std::string message = std::move(chosen->message);
  waiting_.erase(chosen);
  pause_ = PauseBehind(message);
  if (pause_ > 0) written_at_ = now_ms;
  return message;
}

// The index of the message to send next.
std::size_t SendQueue::Chosen(std::int64_t now_ms) const {
  const std::string& first = waiting_.front().message;
  if (!IsWords(first)) return 0;
  const auto action =
      std::find_if(waiting_.begin(), waiting_.end(), [](const Waiting& waiting) { return !IsWords(waiting.message); });
  const bool can_wait =
      action == waiting_.end() || now_ms + PauseBehind(first) <= action->since + kMaxWaitBehindWordsMs;
  return can_wait ? 0 : static_cast<std::size_t>(action - waiting_.begin());
}

void SendQueue::Acknowledged(std::int64_t now_ms, int round_trip_ms) {
  if (!written_at_) return;
  written_at_.reset();
  free_at_ = now_ms + pause_ - std::clamp(round_trip_ms, 0, kMaxRoundTripMs);
}

int SendQueue::WaitMs(std::int64_t now_ms) const {
  if (written_at_) return static_cast<int>(std::clamp<std::int64_t>((now_ms - *written_at_) / 8, 1, kLongestPollMs));
  if (waiting_.empty()) return -1;
  return static_cast<int>(std::clamp<std::int64_t>(free_at_ - now_ms, 0, kLongPauseMs));
}

}  // namespace morva
