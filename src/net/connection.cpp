#include "net/connection.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace morva {

namespace {

constexpr std::size_t kReadAtOnce = 1 << 14;
// A peer that sends at full speed must leave the window time for its user: more than this has to wait for a turn of
// the event loop, and what waits longest waits at the sender.
constexpr int kMessagesAtOnce = 64;

std::int64_t NowMs() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

}  // namespace

Connection::Connection() {
  socket_.ConnectionRequest = [this](int requestID) { ConnectionRequest(requestID); };
  socket_.Connected = [this] { Connected(); };
  socket_.DataArrival = [this] {
    DataArrival();
    Read();
  };
  socket_.Closed = [this] {
    HandOutTheRest();
    queue_ = {};  // nobody is there to hear it
    Closed();
  };
  quiet_.Tick = [this] {
    quiet_.Interval = 0;
    // The program may have been busy: what came in meanwhile has not been quiet.
    if (socket_.HasData()) return Read();
    reader_.Quiet();
    HandOut();
  };
  resume_.Tick = [this] {
    resume_.Interval = 0;
    resting_ = false;
    HandOut();
    Read();
  };
  due_.Tick = [this] { SendDue(); };
}

bool Connection::Listen() {
  socket_.LocalPort = LocalPort;
  return socket_.Listen();
}

void Connection::Connect() {
  socket_.RemotePort = RemotePort;
  socket_.RemoteHost = RemoteHost;
  socket_.Connect();
}

void Connection::Close() {
  while (!queue_.Empty()) {
    std::this_thread::sleep_for(std::chrono::milliseconds(std::max(0, queue_.WaitMs(NowMs()))));
    SendDue();
  }
  for (Timer* timer : {&quiet_, &resume_, &due_}) timer->Interval = 0;
  socket_.Close();
}

void Connection::SendData(std::string message) {
  queue_.Put(std::move(message));
  SendDue();
}

void Connection::SendDue() {
  while (const auto message = queue_.Next(NowMs())) socket_.SendData(*message);
  due_.Interval = queue_.Empty() ? 0 : std::max(1, queue_.WaitMs(NowMs()));
}

void Connection::Read() {
  while (!resting_) {
    const std::string bytes = socket_.GetData(kReadAtOnce);
    if (bytes.empty()) return;
    reader_.Bytes(bytes);
    HandOut();
  }
}

void Connection::HandOut() {
  for (int handed_out = 0; !resting_; ++handed_out) {
    if (handed_out == kMessagesAtOnce) {
      resting_ = true;
      resume_.Interval = 1;
      break;
    }
    const auto message = reader_.Next();
    if (!message) break;
    Message(*message);
  }
  quiet_.Interval = resting_ ? 0 : reader_.QuietNeeded();
}

void Connection::HandOutTheRest() {
  for (;;) {
    while (const auto message = reader_.Next()) Message(*message);
    const std::string bytes = socket_.GetData(kReadAtOnce);
    if (bytes.empty()) break;
    reader_.Bytes(bytes);
  }
  reader_.Quiet();
  while (const auto message = reader_.Next()) Message(*message);
}

}  // namespace morva
