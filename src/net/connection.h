#pragma once

#include <functional>
#include <memory>
#include <string>

#include "net/line.h"
#include "platform/system/local_address.h"
#include "platform/system/socket.h"
#include "platform/system/timer.h"

namespace morva {

/// The one connection of a program run, as messages: it sends each far enough from the others to be told apart, and
/// takes what arrives to pieces. All events come from the event loop, also while a message box is open.
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
  std::function<void()> Closed;                             ///< the other side is gone; never for one's own Close

  std::string LocalIP() const { return LocalAddress(); }
  bool Listen();
  void Connect();
  void Accept(int requestID);
  /// Ends the listening or the connection, at once. What was handed to SendData still goes out, and the end of the
  /// program waits for that, as long as the other side takes it.
  void Close();
  /// Hands over one message, as bytes, to be sent in its turn. Without a connection nothing happens.
  void SendData(std::string message);

 private:
  void Open(std::unique_ptr<TcpStream> stream);
  void HandOut();

  Socket socket_;
  std::shared_ptr<Line> line_;
  Timer rest_;  ///< hands out what is left
};

}  // namespace morva
