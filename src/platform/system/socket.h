#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/system/tcp_stream.h"

namespace morva {

/// The address by which other computers reach this one: that of the interface of the default route; without a route the
/// best one there is, link-local ones late and loopback last. Sends nothing.
std::string LocalAddress();

/// Makes TCP connections, by listening or by connecting. All events come from the event loop.
class Socket {
 public:
  Socket();
  ~Socket();

  int LocalPort = 0;       ///< for Listen
  int RemotePort = 0;      ///< for Connect
  std::string RemoteHost;  ///< for Connect: a name or an IPv4 or IPv6 address, as typed

  std::function<void(int requestID)> ConnectionRequest;              ///< while listening: somebody wants to connect
  std::function<void(std::unique_ptr<TcpStream> stream)> Connected;  ///< Connect got through

  /// Waits for connection requests on LocalPort, on every address of this machine. False: the port can't be had.
  bool Listen();
  /// Starts an attempt; Connected reports success, nothing reports failure.
  void Connect();
  /// Takes over the waiting connection; none where nobody waits.
  std::unique_ptr<TcpStream> Accept(int requestID);
  /// Ends the listening or the attempt.
  void Close();

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace morva
