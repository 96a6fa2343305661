#include "platform/system/tcp_stream.h"

#include <linux/sockios.h>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <utility>

namespace morva {

namespace {

void Set(int connection, int option, int value) {
  ::setsockopt(connection, IPPROTO_TCP, option, &value, sizeof(value));
}

bool CanTryAgain() { return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR; }

}  // namespace

TcpStream::TcpStream(int descriptor) : connection_(descriptor), wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  Set(connection_, TCP_NODELAY, 1);
}

TcpStream::~TcpStream() {
  ::close(connection_);
  ::close(wake_);
}

void TcpStream::Wait(int ms, bool to_read, bool to_write) {
  // The other side waits for the acknowledgement, which the system would delay to send it along with data.
  if (std::exchange(unacknowledged_, false)) Set(connection_, TCP_QUICKACK, 1);
  const int wanted = (to_read ? POLLIN : 0) | (to_write ? POLLOUT : 0);
  // poll() reports a broken connection even when nothing is wanted, again and again: then it is left out.
  pollfd watched[] = {{wake_, POLLIN, 0}, {wanted != 0 ? connection_ : -1, static_cast<short>(wanted), 0}};
  ::poll(watched, 2, ms);
  if (watched[0].revents == 0) return;
  std::uint64_t calls = 0;
  [[maybe_unused]] const auto taken = ::read(wake_, &calls, sizeof(calls));
}

void TcpStream::Wake() const {
  const std::uint64_t call = 1;
  [[maybe_unused]] const auto given = ::write(wake_, &call, sizeof(call));
}

std::string TcpStream::Read(std::size_t most) {
  if (room_.size() < most) room_.resize(most);
  const auto size = ::recv(connection_, room_.data(), most, MSG_DONTWAIT);
  if (size == 0 || (size < 0 && !CanTryAgain())) ended_ = true;
  if (size > 0) unacknowledged_ = true;
  return room_.substr(0, size > 0 ? static_cast<std::size_t>(size) : 0);
}

std::size_t TcpStream::Write(std::string_view bytes) {
  const auto size = ::send(connection_, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
  if (size < 0 && !CanTryAgain()) ended_ = true;
  return size > 0 ? static_cast<std::size_t>(size) : 0;
}

bool TcpStream::Acknowledged() const {
  int bytes = 0;
  return ::ioctl(connection_, SIOCOUTQ, &bytes) != 0 || bytes == 0;
}

int TcpStream::RoundTripMs() const {
  tcp_info info{};
  socklen_t size = sizeof(info);
  if (::getsockopt(connection_, IPPROTO_TCP, TCP_INFO, &info, &size) != 0) return 0;
  const bool known = info.tcpi_min_rtt != ~0U;
  return known ? static_cast<int>(info.tcpi_min_rtt / 1000) : 0;
}

void TcpStream::GiveUpAfter(int ms) const { Set(connection_, TCP_USER_TIMEOUT, ms); }

void TcpStream::FinishWriting() const { ::shutdown(connection_, SHUT_WR); }

}  // namespace morva
