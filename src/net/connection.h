#pragma once

#include <functional>
#include <memory>
#include <string>

#include "net/connection_thread.h"
#include "platform/system/event_loop.h"
#include "platform/system/socket.h"

namespace morva {

/// The program's one connection, as a stream of messages: it spaces those that it sends, so that the receiver can tell
/// them apart, and splits the bytes that arrive. All events come from the event loop, also while a message box is open.
class Connection {
 public:
  Connection();
  ~Connection();

  int LocalPort = 0;       ///< for Listen
  int RemotePort = 0;      ///< for Connect
  std::string RemoteHost;  ///< for Connect, as typed

  std::function<void(int requestID)> ConnectionRequest;
  std::function<void()> Connected;
  std::function<void()> DataArrival;                        ///< the first bytes have arrived; their messages follow
  std::function<void(const std::string& message)> Message;  ///< one whole message, as bytes
  std::function<void()> Closed;  ///< the other side has closed; not called after one's own Close

  std::string LocalIP() const { return LocalAddress(); }
  bool Listen();
  void Connect();
  void Accept(int requestID);
  /// Closes the connection, or stops listening, at once. Data handed to SendData is still sent, and the program waits
  /// for that before it exits, as long as the other side accepts it.
  void Close();
  /// Queues one message, as bytes. Does nothing without a connection.
  void SendData(std::string message);

 private:
  void Open(std::unique_ptr<TcpStream> stream);
  void HandOut();

  Socket socket_;
  std::shared_ptr<ConnectionThread> thread_;
  Timer rest_;  ///< hands out remaining events
};

}  // namespace morva
