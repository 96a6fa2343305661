#include "net/connection_thread.h"

#include <algorithm>
#include <chrono>
#include <iterator>

#include "platform/system/event_loop.h"

namespace morva {

namespace {

constexpr std::size_t kReadAtOnce = 1 << 14;
// Nothing is read above this limit, so that TCP slows the sender down: a peer that floods the connection must not fill
// our memory.
constexpr std::size_t kMaxEvents = 256;
constexpr int kGoodbyeMs = 500;
constexpr int kGiveUpMs = 15000;

std::int64_t NowMs() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

}  // namespace

void ConnectionThread::Start() {
  thread_ = std::jthread([this] { Run(); });
}

void ConnectionThread::Send(std::string message) {
  {
    const std::lock_guard lock(mutex_);
    to_send_.emplace_back(std::move(message), NowMs());
  }
  stream_->Wake();
}

std::optional<ConnectionThread::Event> ConnectionThread::Take() {
  const std::lock_guard lock(mutex_);
  if (events_.size() == kMaxEvents) stream_->Wake();
  if (events_.empty()) {
    announced_ = false;
    return std::nullopt;
  }
  Event event = std::move(events_.front());
  events_.pop_front();
  return event;
}

void ConnectionThread::Finish() {
  News = nullptr;
  {
    const std::lock_guard lock(mutex_);
    finishing_ = true;
  }
  stream_->Wake();
}

void ConnectionThread::Run() {
  bool finishing = false;
  while (!stream_->Ended()) {
    bool has_room = true;
    {
      const std::lock_guard lock(mutex_);
      for (auto& [message, since] : to_send_) queue_.Put(std::move(message), since);
      to_send_.clear();
      finishing = finishing_;
      has_room = events_.size() < kMaxEvents;
    }
    const std::int64_t now = NowMs();
    if (finishing) {
      stream_->GiveUpAfter(kGiveUpMs);
      stream_->Read(kReadAtOnce);
    } else if (has_room) {
      Receive(now);
    }
    SendDue(now);
    if (finishing && queue_.Empty() && unsent_.empty()) return SayGoodbye();
    stream_->Wait(WaitMs(now, has_room && !finishing), finishing || has_room, !unsent_.empty());
  }
  if (!finishing) TellEnd();
  over_ = true;
}

void ConnectionThread::Receive(std::int64_t now_ms) {
  std::vector<Event> events;
  const std::string bytes = stream_->Read(kReadAtOnce);
  if (!bytes.empty()) {
    reader_.Bytes(bytes, now_ms);
    if (!std::exchange(heard_, true)) events.push_back({Event::Kind::kFirstBytes});
  }
  while (auto message = reader_.Next(now_ms)) events.push_back({Event::Kind::kMessage, std::move(*message)});
  Tell(std::move(events));
}

void ConnectionThread::TellEnd() {
  std::vector<Event> events;
  reader_.End();
  while (auto message = reader_.Next(NowMs())) events.push_back({Event::Kind::kMessage, std::move(*message)});
  events.push_back({Event::Kind::kEnd});
  Tell(std::move(events));
}

void ConnectionThread::Tell(std::vector<Event> events) {
  if (events.empty()) return;
  {
    const std::lock_guard lock(mutex_);
    std::move(events.begin(), events.end(), std::back_inserter(events_));
    if (std::exchange(announced_, true)) return;
  }
  Post([thread = weak_from_this()] {
    const auto self = thread.lock();
    if (self && self->News) std::function(self->News)();
  });
}

void ConnectionThread::SendDue(std::int64_t now_ms) {
  for (;;) {
    if (unsent_.empty()) {
      const bool to_look = queue_.AwaitsAcknowledgement();
      if (to_look && stream_->Acknowledged()) queue_.Acknowledged(now_ms, stream_->RoundTripMs());
      auto message = queue_.Next(now_ms);
      if (!message) return;
      unsent_ = std::move(*message);
    }
    unsent_.erase(0, stream_->Write(unsent_));
    if (!unsent_.empty()) return;
  }
}

int ConnectionThread::WaitMs(std::int64_t now_ms, bool receiving) const {
  // While nothing is read the reader can't act on a time-out, and waiting for one would only spin.
  const int reader = receiving ? reader_.WaitMs(now_ms) : -1;
  const int queue = unsent_.empty() ? queue_.WaitMs(now_ms) : -1;
  if (reader < 0 || queue < 0) return std::max(reader, queue);
  return std::min(reader, queue);
}

// Bytes that arrive at a closed socket make the system reset the connection and discard what it has not delivered yet.
// So tell the other side first that nothing more follows, and read until it has closed, too.
void ConnectionThread::SayGoodbye() {
  stream_->FinishWriting();
  std::int64_t acknowledged_at = 0;
  while (!stream_->Ended()) {
    if (acknowledged_at == 0 && stream_->Acknowledged()) acknowledged_at = NowMs();
    if (acknowledged_at != 0 && NowMs() - acknowledged_at > kGoodbyeMs) break;
    stream_->Wait(20, true, false);
    stream_->Read(kReadAtOnce);
  }
  over_ = true;
}

}  // namespace morva
