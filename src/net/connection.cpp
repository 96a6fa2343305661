#include "net/connection.h"

#include <cstdlib>
#include <utility>
#include <vector>

namespace morva {

namespace {

// A peer that floods the connection must not starve the user interface: further events wait for the next turn of the
// event loop.
constexpr int kMaxEventsAtOnce = 64;

// Connections that this side has closed but that still have data to send. The program waits for them before it exits,
// also by quick_exit, which runs no destructors.
std::vector<std::shared_ptr<ConnectionThread>>& Closing() {
  static std::vector<std::shared_ptr<ConnectionThread>> threads;
  [[maybe_unused]] static const int registered = std::at_quick_exit([] { Closing().clear(); });
  return threads;
}

}  // namespace

Connection::Connection() {
  socket_.ConnectionRequest = [this](int requestID) { ConnectionRequest(requestID); };
  socket_.Connected = [this](std::unique_ptr<TcpStream> stream) {
    Open(std::move(stream));
    Connected();
  };
  rest_.Tick = [this] { HandOut(); };
}

Connection::~Connection() { Close(); }

bool Connection::Listen() {
  socket_.LocalPort = LocalPort;
  return socket_.Listen();
}

void Connection::Connect() {
  socket_.RemotePort = RemotePort;
  socket_.RemoteHost = RemoteHost;
  socket_.Connect();
}

void Connection::Accept(int requestID) {
  if (auto stream = socket_.Accept(requestID)) Open(std::move(stream));
}

void Connection::Open(std::unique_ptr<TcpStream> stream) {
  thread_ = std::make_shared<ConnectionThread>(std::move(stream));
  thread_->News = [this] { HandOut(); };
  thread_->Start();
}

void Connection::Close() {
  socket_.Close();
  rest_.Interval = 0;
  if (!thread_) return;
  thread_->Finish();
  std::erase_if(Closing(), [](const auto& thread) { return thread->Over(); });
  Closing().push_back(std::exchange(thread_, nullptr));
}

void Connection::SendData(std::string message) {
  if (thread_) thread_->Send(std::move(message));
}

void Connection::HandOut() {
  const auto thread = thread_;
  for (int left = kMaxEventsAtOnce; left > 0 && thread && thread->News; --left) {
    const auto event = thread->Take();
    // An event can open a message box and block here; the timer then hands out the later ones.
    rest_.Interval = event ? 1 : 0;
    if (!event) return;
    switch (event->kind) {
      case ConnectionThread::Event::Kind::kFirstBytes:
        DataArrival();
        break;
      case ConnectionThread::Event::Kind::kMessage:
        Message(event->message);
        break;
      case ConnectionThread::Event::Kind::kEnd:
        Closed();
        break;
    }
  }
}

}  // namespace morva
