#include "platform/system/socket.h"

#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <QUrl>
#include <cerrno>
#include <cstdint>
#include <stop_token>
#include <string>
#include <thread>
#include <utility>

#include "platform/system/event_loop.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

constexpr int kNone = -1;

void Set(int socket, int level, int option, int value) { ::setsockopt(socket, level, option, &value, sizeof(value)); }

// Listens on every address of this machine, of both kinds where the system has both.
int ListenOn(int port) {
  constexpr int kMostWaiting = 50;
  sockaddr_in6 any{};
  any.sin6_family = AF_INET6;
  any.sin6_port = htons(static_cast<std::uint16_t>(port));
  sockaddr_in any_v4{};
  any_v4.sin_family = AF_INET;
  any_v4.sin_port = any.sin6_port;
  const auto listen = [](const auto& address) {
    const auto& plain = reinterpret_cast<const sockaddr&>(address);
    const int listener = ::socket(plain.sa_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (listener < 0) return kNone;
    Set(listener, SOL_SOCKET, SO_REUSEADDR, 1);
    if (plain.sa_family == AF_INET6) Set(listener, IPPROTO_IPV6, IPV6_V6ONLY, 0);
    if (::bind(listener, &plain, sizeof(address)) == 0 && ::listen(listener, kMostWaiting) == 0) return listener;
    const int error = errno;
    ::close(listener);
    errno = error;
    return kNone;
  };
  const int listener = listen(any);
  return listener == kNone && errno != EADDRINUSE ? listen(any_v4) : listener;
}

int ConnectTo(const addrinfo& address) {
  constexpr timeval kPatience{30, 0}, kForever{};
  const int connection = ::socket(address.ai_family, address.ai_socktype | SOCK_CLOEXEC, address.ai_protocol);
  if (connection < 0) return kNone;
  ::setsockopt(connection, SOL_SOCKET, SO_SNDTIMEO, &kPatience, sizeof(kPatience));
  if (::connect(connection, address.ai_addr, address.ai_addrlen) != 0) {
    ::close(connection);
    return kNone;
  }
  ::setsockopt(connection, SOL_SOCKET, SO_SNDTIMEO, &kForever, sizeof(kForever));
  return connection;
}

// Tries the addresses that the host has, one after the other.
int ConnectTo(const std::string& host, int port, const std::stop_token& abandoned) {
  addrinfo wanted{}, *found = nullptr;
  wanted.ai_socktype = SOCK_STREAM;
  if (::getaddrinfo(host.c_str(), std::to_string(port).c_str(), &wanted, &found) != 0) return kNone;
  int connection = kNone;
  for (const addrinfo* address = found; address != nullptr && connection == kNone; address = address->ai_next) {
    if (!abandoned.stop_requested()) connection = ConnectTo(*address);
  }
  ::freeaddrinfo(found);
  return connection;
}

// The name as the network knows it, which has no letters beyond ASCII.
std::string NetworkName(const std::string& host) {
  const QString typed = QtText(host).trimmed();
  const QByteArray name = QUrl::toAce(typed);
  return name.isEmpty() ? typed.toStdString() : name.toStdString();
}

}  // namespace

class Socket::Impl {
 public:
  explicit Impl(Socket& owner) : owner_(owner) {}

  bool Listen() {
    listener_ = ListenOn(owner_.LocalPort);
    if (listener_ == kNone) return false;
    knocks_ = new QSocketNotifier(listener_, QSocketNotifier::Read);
    QObject::connect(knocks_, &QSocketNotifier::activated, [this] { TakeIn(); });
    return true;
  }

  // On a thread of its own, since finding the host can take as long as the network likes. Nothing waits for its end.
  void Connect() {
    attempt_.request_stop();
    attempt_ = std::stop_source();
    std::thread([this, abandoned = attempt_.get_token(), host = NetworkName(owner_.RemoteHost),
                 port = owner_.RemotePort] {
      const int connection = ConnectTo(host, port, abandoned);
      if (connection == kNone) return;
      Post([this, abandoned, connection] {
        auto stream = std::make_unique<TcpStream>(connection);
        if (!abandoned.stop_requested() && owner_.Connected) owner_.Connected(std::move(stream));
      });
    }).detach();
  }

  void Close() {
    attempt_.request_stop();
    if (listener_ == kNone) return;
    knocks_->setEnabled(false);
    knocks_->deleteLater();  // it may be what calls
    ::close(std::exchange(listener_, kNone));
  }

  std::unique_ptr<TcpStream> waiting_;

 private:
  void TakeIn() {
    const int connection = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0) return;
    auto stream = std::make_unique<TcpStream>(connection);
    if (waiting_) return;
    waiting_ = std::move(stream);
    if (owner_.ConnectionRequest) owner_.ConnectionRequest(0);
  }

  Socket& owner_;
  int listener_ = kNone;
  QSocketNotifier* knocks_ = nullptr;
  std::stop_source attempt_;
};

Socket::Socket() : impl_(std::make_unique<Impl>(*this)) {}

Socket::~Socket() { Close(); }

bool Socket::Listen() { return impl_->Listen(); }

void Socket::Connect() { impl_->Connect(); }

std::unique_ptr<TcpStream> Socket::Accept(int /*requestID*/) { return std::move(impl_->waiting_); }

void Socket::Close() { impl_->Close(); }

}  // namespace morva
