#pragma once

#include <functional>
#include <string>

#include "net/message_reader.h"
#include "net/send_queue.h"
#include "platform/system/socket.h"
#include "platform/system/timer.h"

namespace morva {

/// The one connection of a program run, as messages: it sends each as one write, far enough apart to be told apart, and
/// takes what arrives to pieces.
class Connection {
 public:
  Connection();

  int LocalPort = 0;       ///< for Listen
  int RemotePort = 0;      ///< for Connect
  std::string RemoteHost;  ///< for Connect, as typed

  std::function<void(int requestID)> ConnectionRequest;
  std::function<void()> Connected;
  std::function<void()> DataArrival;                        ///< something arrived; its messages follow
  std::function<void(const std::string& message)> Message;  ///< one whole message, as bytes
  std::function<void()> Closed;                             ///< the other side is gone; never for one's own Close

  std::string LocalIP() const { return socket_.LocalIP(); }
  bool Listen();
  void Connect();
  void Accept(int requestID) { socket_.Accept(requestID); }
  /// Ends the listening or the connection. What was handed to SendData still goes out.
  void Close();
  /// Hands over one message, as bytes, to be sent in its turn.
  void SendData(std::string message);

 private:
  void Read();
  void HandOut();
  void HandOutTheRest();
  void SendDue();

  Socket socket_;
  MessageReader reader_;
  SendQueue queue_;
  Timer quiet_;   ///< the line has been quiet long enough
  Timer resume_;  ///< the window has had its turn, go on with what has arrived
  Timer due_;     ///< the next message may leave
  bool resting_ = false;
};

}  // namespace morva
