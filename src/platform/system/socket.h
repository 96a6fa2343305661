#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace morva {

/// One TCP connection, made by listening or by connecting. All events come from the event loop.
class Socket {
 public:
  Socket();
  ~Socket();

  int LocalPort = 0;       ///< for Listen
  int RemotePort = 0;      ///< for Connect
  std::string RemoteHost;  ///< for Connect: a name or an IPv4 or IPv6 address, as typed

  std::function<void(int requestID)> ConnectionRequest;  ///< while listening: somebody wants to connect
  std::function<void()> Connected;                       ///< Connect got through
  std::function<void()> DataArrival;                     ///< there is something for GetData
  std::function<void()> Closed;  ///< the other side closed, or the connection broke; never for one's own Close

  /// An address by which another computer reaches this one; a loopback address only where there is no other.
  std::string LocalIP() const;
  /// Waits for connection requests on LocalPort, on every address of this machine. False: the port can't be had.
  bool Listen();
  /// Starts an attempt; Connected tells its success, nothing its failure.
  void Connect();
  /// Takes over the waiting connection.
  void Accept(int requestID);
  /// Ends the listening or the connection. What was handed to SendData still goes out, for at most two seconds.
  void Close();
  /// Sends the bytes as one write, without delay; without a connection nothing happens.
  void SendData(std::string_view bytes);
  /// Takes at most this many of the bytes that have arrived.
  std::string GetData(std::size_t most);
  /// Looks at the connection now, without waiting for the event loop: whether there is something for GetData.
  bool HasData();

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace morva
