#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "net/message_reader.h"
#include "net/send_queue.h"
#include "platform/system/tcp_stream.h"

namespace morva {

/// The open line to the other side, with a thread of its own: how long it is quiet is measured where the bytes arrive,
/// and what waits to be sent leaves in its time, however busy the windows are, and also when they are gone.
///
/// Every routine is for the window's thread.
class Line : public std::enable_shared_from_this<Line> {
 public:
  /// What happened at the other end, in this order: the first bytes once, messages, the end once.
  struct Event {
    enum class Kind { kFirstBytes, kMessage, kEnd } kind;
    std::string message = {};  ///< whole, as bytes
  };

  explicit Line(std::unique_ptr<TcpStream> stream) : stream_(std::move(stream)) {}

  std::function<void()> News;  ///< there is an event to take; not called again before Take() has given nothing

  void Start();
  /// Has a message sent in its turn.
  void Send(std::string message);
  std::optional<Event> Take();
  /// From here on nothing is sent or heard any more; but what waits still goes out, as long as the other side takes it.
  void Finish();
  /// Whether the thread's work is done. The object's end waits for it.
  bool Over() const { return over_; }

 private:
  void Run();
  void SendDue(std::int64_t now_ms);
  void Receive(std::int64_t now_ms);
  void TellEnd();
  void Tell(std::vector<Event> events);
  int WaitMs(std::int64_t now_ms, bool receiving) const;
  void SayGoodbye();

  // The thread's own.
  std::unique_ptr<TcpStream> stream_;
  MessageReader reader_;
  SendQueue queue_;
  std::string unsent_;  ///< of the last message, what the system had no room for
  bool heard_ = false;  ///< the first bytes have come

  // Between the threads.
  std::mutex mutex_;
  std::vector<std::pair<std::string, std::int64_t>> to_send_;  ///< each with its time
  std::deque<Event> events_;
  bool announced_ = false;  ///< News is on its way, or its receiver has not taken everything
  bool finishing_ = false;
  std::atomic<bool> over_ = false;

  std::jthread thread_;  ///< the last one here, so that it ends before the others go
};

}  // namespace morva
