#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace morva {

/// An open TCP connection. It belongs to one thread, which waits in Wait(); the others can only wake it.
class TcpStream {
 public:
  /// Takes the connection over, and closes it when the object goes.
  explicit TcpStream(int descriptor);
  TcpStream(const TcpStream&) = delete;
  TcpStream& operator=(const TcpStream&) = delete;
  ~TcpStream();

  /// Waits for so many milliseconds, or with -1 for as long as it takes, until there is something to read or room to
  /// write, whichever is asked for, or another thread calls Wake().
  void Wait(int ms, bool to_read, bool to_write);
  /// Ends the wait, or the next one. For any thread.
  void Wake() const;

  /// Takes what has arrived, at most so many bytes; empty when nothing has.
  std::string Read(std::size_t most);
  /// Whether Read() or Write() has found that the other side has closed, or the connection is broken.
  bool Ended() const { return ended_; }

  /// Sends the bytes without delay and tells how many of them the system took.
  std::size_t Write(std::string_view bytes);
  /// Whether the other side's system has everything that was written.
  bool Acknowledged() const;
  /// The shortest round trip so far, milliseconds; 0: not known.
  int RoundTripMs() const;
  /// Treats the connection as broken once the other side has not acknowledged data for so many milliseconds.
  void GiveUpAfter(int ms) const;
  /// Tells the other side that nothing more follows.
  void FinishWriting() const;

 private:
  int connection_;
  int wake_;
  std::string room_;  // for what is read
  bool ended_ = false;
  bool unacknowledged_ = false;
};

}  // namespace morva
