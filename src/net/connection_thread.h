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

/// An open connection and the thread that serves it: quiet periods are measured and queued messages are sent on time,
/// however busy the windows are, and also after they have closed.
///
/// All routines are called from the window's thread.
class ConnectionThread : public std::enable_shared_from_this<ConnectionThread> {
 public:
  /// What has arrived, in this order: the first bytes once, messages, the end once.
  struct Event {
    enum class Kind { kFirstBytes, kMessage, kEnd } kind;
    std::string message = {};  ///< complete, as bytes
  };

  explicit ConnectionThread(std::unique_ptr<TcpStream> stream) : stream_(std::move(stream)) {}

  std::function<void()> News;  ///< an event waits for Take(); not called again before Take() has returned nothing

  void Start();
  /// Queues a message.
  void Send(std::string message);
  std::optional<Event> Take();
  /// Accepts and delivers nothing from here on. Queued messages are still sent, as long as the other side accepts them.
  void Finish();
  /// Whether the thread has finished. The destructor waits for it.
  bool Over() const { return over_; }

 private:
  void Run();
  void SendDue(std::int64_t now_ms);
  void Receive(std::int64_t now_ms);
  void TellEnd();
  void Tell(std::vector<Event> events);
  int WaitMs(std::int64_t now_ms, bool receiving) const;
  void SayGoodbye();

  // Used by the thread alone.
  std::unique_ptr<TcpStream> stream_;
  MessageReader reader_;
  SendQueue queue_;
  std::string unsent_;  ///< the rest of the last message, for which the system had no room
  bool heard_ = false;  ///< the first bytes have arrived

  // Shared, guarded by the mutex.
  std::mutex mutex_;
  std::vector<std::pair<std::string, std::int64_t>> to_send_;  ///< each with the time of Send
  std::deque<Event> events_;
  bool announced_ = false;  ///< News is posted, or its receiver has not yet taken everything
  bool finishing_ = false;
  std::atomic<bool> over_ = false;

  std::jthread thread_;  ///< last, so that it ends before the other members are destroyed
};

}  // namespace morva
