#include "net/connection.h"

#include <cstdlib>
#include <utility>
#include <vector>

namespace morva {

namespace {

// A peer that sends at full speed must leave the window time for its user: more than this has to wait for a turn of the
// event loop.
constexpr int kEventsAtOnce = 64;

// The lines that are closed here and still have something to say. The end of the program waits for them, also where its
// static objects stay.
std::vector<std::shared_ptr<Line>>& Leaving() {
  static std::vector<std::shared_ptr<Line>> lines;
  [[maybe_unused]] static const int registered = std::at_quick_exit([] { Leaving().clear(); });
  return lines;
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
  line_ = std::make_shared<Line>(std::move(stream));
  line_->News = [this] { HandOut(); };
  line_->Start();
}

void Connection::Close() {
  socket_.Close();
  rest_.Interval = 0;
  if (!line_) return;
  line_->Finish();
  std::erase_if(Leaving(), [](const auto& line) { return line->Over(); });
  Leaving().push_back(std::exchange(line_, nullptr));
}

void Connection::SendData(std::string message) {
  if (line_) line_->Send(std::move(message));
}

void Connection::HandOut() {
  const auto line = line_;
  for (int left = kEventsAtOnce; left > 0 && line && line->News; --left) {
    const auto event = line->Take();
    // What comes behind an event must not wait for the box that it opens.
    rest_.Interval = event ? 1 : 0;
    if (!event) return;
    switch (event->kind) {
      case Line::Event::Kind::kFirstBytes:
        DataArrival();
        break;
      case Line::Event::Kind::kMessage:
        Message(event->message);
        break;
      case Line::Event::Kind::kEnd:
        Closed();
        break;
    }
  }
}

}  // namespace morva
